#include <algorithm>

#include "diff/report.h"

namespace quillet::diff {

namespace {

std::string_view heading(Category category) {
    switch (category) {
    case Category::Breaking: return "## Breaking changes\n\nScripts that use these may now be refused.\n";
    case Category::Behaviour: return "## Changes in behaviour\n\nScripts still run but may do something else.\n";
    case Category::Compatible: return "## Compatible changes\n\nExisting scripts keep their meaning.\n";
    }
    return "";
}

// A code span that holds any word: its fence is longer than any run of
// backticks inside, and padded where the word starts or ends with one.
std::string codeSpan(std::string_view word) {
    std::size_t longest = 0;
    std::size_t run = 0;
    for (char c : word) {
        run = c == '`' ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    const std::string fence(longest + 1, '`');
    const bool pad = !word.empty() && (word.front() == '`' || word.back() == '`');
    const std::string space = pad ? " " : "";
    return fence + space + std::string(word) + space + fence;
}

}  // namespace

void writeMarkdownReport(std::ostream& out, const ChangeList& changes) {
    out << "# Changes to the command language\n";
    if (changes.empty()) out << "\nNo changes.\n";
    const Change* previous = nullptr;
    for (const Change* entry : inReportOrder(changes)) {
        const Change& change = *entry;
        if (previous == nullptr || previous->category() != change.category()) {
            out << '\n' << heading(change.category());
            previous = nullptr;
        }
        if (previous == nullptr || previous->keyword != change.keyword)
            out << "\n### " << codeSpan(change.keyword.view()) << "\n\n";
        out << "- " << describe(change, codeSpan) << ".\n";
        previous = entry;
    }
}

}  // namespace quillet::diff
