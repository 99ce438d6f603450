#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "diff/rule.h"
#include "model/text.h"

namespace quillet::diff {

// One difference between two definitions, in the words of the script writer:
// the keyword (or alias) typed, the option if one is concerned, and the old
// and new values as shown to users. A value is absent where its side has no
// such thing (an added keyword has no old value); a line is absent where its
// side has no record. Names and values are 8-byte handles to texts of the
// compared definitions or of the comparison's own arena, which must outlive
// the change.
struct Change {
    Rule rule;
    Text keyword;
    std::optional<Text> option{};
    std::optional<Text> oldValue{};
    std::optional<Text> newValue{};
    std::optional<int> oldLine{};
    std::optional<int> newLine{};

    Category category() const { return ruleInfo(rule).category; }
};

// Two unrelated big definitions differ in millions of places: the list
// grows in blocks, never moving what it holds.
using ChangeList = std::deque<Change>;

struct CategoryCounts {
    int breaking = 0;
    int behaviour = 0;
    int compatible = 0;
};
CategoryCounts countCategories(const ChangeList& changes);

// The order of every report: by category, then in the comparer's order.
// Pointers, as millions of changes are not worth copying.
std::vector<const Change*> inReportOrder(const ChangeList& changes);

// The rule's sentence about the change, each of its words (names and
// values) put in by `quote`; an absent value reads "none".
std::string describe(const Change& change, const std::function<std::string(std::string_view)>& quote);

}  // namespace quillet::diff
