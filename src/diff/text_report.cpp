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

std::string_view shown(const std::optional<Text>& value) { return value ? value->view() : "(none)"; }

}  // namespace

void writeTextReport(std::ostream& out, const ChangeList& changes, const std::string& oldPath,
                     const std::string& newPath, bool colour) {
    std::string line;
    for (const Change* entry : inReportOrder(changes)) {
        const Change& change = *entry;
        line.clear();
        if (colour) line += colourOf(change.category());
        line += categoryName(change.category());
        if (colour) line += "\033[0m";
        line += ' ';
        line += ruleInfo(change.rule).name;
        line += ' ';
        line += change.keyword.view();
        if (change.option) line.append(1, '.').append(change.option->view());
        if (change.oldValue || change.newValue)
            line.append(": ").append(shown(change.oldValue)).append(" -> ").append(shown(change.newValue));
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
