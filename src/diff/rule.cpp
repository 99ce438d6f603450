#include "diff/rule.h"

#include <algorithm>
#include <numeric>

namespace quillet::diff {

std::string_view categoryName(Category category) {
    switch (category) {
    case Category::Breaking: return "breaking";
    case Category::Behaviour: return "behaviour";
    case Category::Compatible: return "compatible";
    }
    return "";
}

Rule flagRule(const DirectiveSpec& row, bool given) {
    // In the order kRules appends them.
    static constexpr auto kFlagRules = [] {
        std::array<std::array<Rule, 2>, kDirectiveCount> flagRules{};
        std::size_t next = rules::kOwnRules.size();
        for (std::size_t i = 0; i < kDirectiveCount; ++i) {
            const DirectiveSpec& flag = kDirectives[i];
            if (!flag.isFlag()) continue;
            flagRules[i][0] = static_cast<Rule>(next++);
            flagRules[i][1] = flag.dropped.name == flag.given.name ? flagRules[i][0] : static_cast<Rule>(next++);
        }
        return flagRules;
    }();
    return kFlagRules[rowIndex(row)][given ? 0 : 1];
}

std::size_t ruleNameRank(Rule rule) {
    static constexpr auto kRanks = [] {
        std::array<std::size_t, kRules.size()> byName{};
        std::iota(byName.begin(), byName.end(), std::size_t{0});
        std::sort(byName.begin(), byName.end(), [](std::size_t a, std::size_t b) { return kRules[a].name < kRules[b].name; });
        std::array<std::size_t, kRules.size()> ranks{};
        for (std::size_t rank = 0; rank < byName.size(); ++rank) ranks[byName[rank]] = rank;
        return ranks;
    }();
    return kRanks[static_cast<std::size_t>(rule)];
}

}  // namespace quillet::diff
