#include "diff/report.h"

namespace quillet::diff {

namespace {

std::string_view colourOf(Category category) {
    switch (category) {
    case Category::Breaking: return "\033[31m";
    case Category::Behaviour: return "\033[33m";
    case Category::Compatible: return "\033[32m";
    }
    return "";
}

}  // namespace

void writeTextReport(std::ostream& out, const std::vector<Change>& changes, const std::string& oldPath,
                     const std::string& newPath, bool colour) {
    std::string line;
    for (const Change& change : changes) {
        line.clear();
        if (colour) line += colourOf(change.category());
        line += categoryName(change.category());
        if (colour) line += "\033[0m";
        line += ' ';
        line += ruleSpec(change.rule).name;
        line += ' ';
        line += change.keyword;
        if (change.option) line += '.' + *change.option;
        if (change.oldValue || change.newValue)
            line += ": " + change.oldValue.value_or("(none)") + " -> " + change.newValue.value_or("(none)");
        if (change.oldLine || change.newLine) {
            line += " (";
            if (change.oldLine) line += oldPath + ':' + std::to_string(*change.oldLine);
            if (change.oldLine && change.newLine) line += ", ";
            if (change.newLine) line += newPath + ':' + std::to_string(*change.newLine);
            line += ')';
        }
        line += '\n';
        out << line;
    }
    const CategoryCounts counts = countCategories(changes);
    out << counts.breaking << " breaking, " << counts.behaviour << " behaviour, " << counts.compatible
        << " compatible\n";
}

}  // namespace quillet::diff
