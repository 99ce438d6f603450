#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "diff/rule.h"

namespace quillet::diff {

// One difference between two definitions, in the words of the script writer:
// the keyword (or alias) typed, the option if one is concerned, and the old
// and new values as shown to users. A value is absent where its side has no
// such thing (an added keyword has no old value); a line is absent where its
// side has no record.
struct Change {
    Rule rule;
    std::string keyword;
    std::optional<std::string> option{};
    std::optional<std::string> oldValue{};
    std::optional<std::string> newValue{};
    std::optional<int> oldLine{};
    std::optional<int> newLine{};

    Category category() const { return ruleSpec(rule).category; }
};

// Category, keyword, option, rule name, then the values: the order of every
// report, whatever order the definitions were written in.
bool reportOrder(const Change& a, const Change& b);

struct CategoryCounts {
    int breaking = 0;
    int behaviour = 0;
    int compatible = 0;
};
CategoryCounts countCategories(const std::vector<Change>& changes);

// The rule's sentence about the change, each of its words (names and
// values) put in by `quote`; an absent value reads "none".
std::string describe(const Change& change, const std::function<std::string(std::string_view)>& quote);

}  // namespace quillet::diff
