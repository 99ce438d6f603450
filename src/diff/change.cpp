#include "diff/change.h"


namespace quillet::diff {

std::vector<const Change*> inReportOrder(const ChangeList& changes) {
    std::vector<const Change*> ordered;
    ordered.reserve(changes.size());
    for (Category category : {Category::Breaking, Category::Behaviour, Category::Compatible})
        for (const Change& change : changes)
            if (change.category() == category) ordered.push_back(&change);
    return ordered;
}

CategoryCounts countCategories(const ChangeList& changes) {
    CategoryCounts counts;
    for (const Change& change : changes) {
        switch (change.category()) {
        case Category::Breaking: ++counts.breaking; break;
        case Category::Behaviour: ++counts.behaviour; break;
        case Category::Compatible: ++counts.compatible; break;
        }
    }
    return counts;
}

namespace {

// The change's word for a placeholder of its rule's message; none for an
// absent value.
std::optional<std::string_view> wordFor(const Change& change, std::string_view placeholder) {
    if (placeholder == "{keyword}") return change.keyword.view();
    const std::optional<Text>& word =
        placeholder == "{option}" ? change.option : placeholder == "{old}" ? change.oldValue : change.newValue;
    if (word) return word->view();
    return std::nullopt;
}

}  // namespace

std::string describe(const Change& change, const std::function<std::string(std::string_view)>& quote) {
    const std::string_view message = ruleInfo(change.rule).message;
    std::string text;
    std::size_t at = 0;
    while (at < message.size()) {
        const std::size_t open = message.find('{', at);
        text.append(message.substr(at, open - at));
        if (open == std::string_view::npos) break;
        const std::size_t close = message.find('}', open);
        const std::optional<std::string_view> word = wordFor(change, message.substr(open, close + 1 - open));
        text += word ? quote(*word) : "none";
        at = close + 1;
    }
    return text;
}

}  // namespace quillet::diff
