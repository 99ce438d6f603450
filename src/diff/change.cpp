#include "diff/change.h"

#include <tuple>

namespace quillet::diff {

bool reportOrder(const Change& a, const Change& b) {
    // An absent option or value sorts first.
    return std::forward_as_tuple(a.category(), a.keyword, a.option, ruleSpec(a.rule).name, a.oldValue, a.newValue) <
           std::forward_as_tuple(b.category(), b.keyword, b.option, ruleSpec(b.rule).name, b.oldValue, b.newValue);
}

CategoryCounts countCategories(const std::vector<Change>& changes) {
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

std::string describe(const Change& change, const std::function<std::string(std::string_view)>& quote) {
    const std::pair<std::string_view, const std::optional<std::string>*> words[] = {
        {"{keyword}", nullptr}, {"{option}", &change.option}, {"{old}", &change.oldValue}, {"{new}", &change.newValue}};
    const std::string_view message = ruleSpec(change.rule).message;
    std::string text;
    std::size_t at = 0;
    while (at < message.size()) {
        const std::size_t open = message.find('{', at);
        text.append(message.substr(at, open - at));
        if (open == std::string_view::npos) break;
        const std::size_t close = message.find('}', open);
        const std::string_view placeholder = message.substr(open, close + 1 - open);
        for (const auto& [name, value] : words) {
            if (name != placeholder) continue;
            if (value == nullptr) text += quote(change.keyword);
            else text += value->has_value() ? quote(**value) : "none";
        }
        at = close + 1;
    }
    return text;
}

}  // namespace quillet::diff
