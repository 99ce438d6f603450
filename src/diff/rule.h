#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "language/directive.h"

namespace quillet::diff {

// What a change means for a script written for the old definition.
using Category = ChangeCategory;

std::string_view categoryName(Category category);

// Every kind of change the comparer reports. The names are part of the
// output and stay stable. The rules of the flags come from the directive
// table, after these: one for giving each flag and one for dropping it.
enum class Rule : std::uint8_t {
    KEYWORD_REMOVED,
    OPTION_REMOVED,
    OPTION_TYPE_CHANGED,
    LIMIT_NARROWED,
    LOOKUP_NAME_REMOVED,
    ALIAS_REMOVED,

    DEFAULT_CHANGED,
    LOOKUP_VALUE_CHANGED,
    ALIAS_TARGET_CHANGED,
    KEYWORD_MADE_ALIAS,
    ALIAS_MADE_KEYWORD,
    MODEL_NAME_TOKENS_CHANGED,

    KEYWORD_ADDED,
    OPTION_ADDED,
    LIMIT_WIDENED,
    LOOKUP_NAME_ADDED,
    ALIAS_ADDED,
    KEYWORD_ID_CHANGED,
    OPTION_ID_CHANGED,
    SUMMARY_CHANGED,
    DESCRIPTION_CHANGED,
    OPERAND_SYNOPSIS_CHANGED,
    OPERAND_DESCRIPTION_CHANGED,
    OPTION_DESCRIPTION_CHANGED,
};

struct RuleInfo {
    Rule rule;
    std::string_view name;
    Category category;
    std::string_view message;  // {keyword}, {option}, {old} and {new} stand for the change's words
};

namespace rules {
using R = Rule;
constexpr Category kBreaking = Category::Breaking;
constexpr Category kBehaviour = Category::Behaviour;
constexpr Category kCompatible = Category::Compatible;

inline constexpr auto kOwnRules = [] {
    return std::to_array<RuleInfo>({
        {R::KEYWORD_REMOVED, "KEYWORD_REMOVED", kBreaking, "Command {keyword} was removed"},
        {R::OPTION_REMOVED, "OPTION_REMOVED", kBreaking, "Option {option} of {keyword} was removed"},
        {R::OPTION_TYPE_CHANGED, "OPTION_TYPE_CHANGED", kBreaking,
         "Option {option} of {keyword} changed type from {old} to {new}"},
        {R::LIMIT_NARROWED, "LIMIT_NARROWED", kBreaking,
         "Option {option} of {keyword} accepts fewer values: {old} became {new}"},
        {R::LOOKUP_NAME_REMOVED, "LOOKUP_NAME_REMOVED", kBreaking,
         "Option {option} of {keyword} no longer accepts the name {old}"},
        {R::ALIAS_REMOVED, "ALIAS_REMOVED", kBreaking, "Alias {keyword} of {old} was removed"},
        {R::DEFAULT_CHANGED, "DEFAULT_CHANGED", kBehaviour,
         "The default of option {option} of {keyword} changed from {old} to {new}"},
        {R::LOOKUP_VALUE_CHANGED, "LOOKUP_VALUE_CHANGED", kBehaviour,
         "Option {option} of {keyword}: the name {old} now stands for {new}"},
        {R::ALIAS_TARGET_CHANGED, "ALIAS_TARGET_CHANGED", kBehaviour,
         "Alias {keyword} now stands for {new} instead of {old}"},
        {R::KEYWORD_MADE_ALIAS, "KEYWORD_MADE_ALIAS", kBehaviour, "Command {keyword} became an alias of {new}"},
        {R::ALIAS_MADE_KEYWORD, "ALIAS_MADE_KEYWORD", kBehaviour,
         "Alias {keyword} of {old} became a command of its own"},
        {R::MODEL_NAME_TOKENS_CHANGED, "MODEL_NAME_TOKENS_CHANGED", kBehaviour,
         "Command {keyword} takes {new} operand words as the model name instead of {old}"},
        {R::KEYWORD_ADDED, "KEYWORD_ADDED", kCompatible, "Command {keyword} was added"},
        {R::OPTION_ADDED, "OPTION_ADDED", kCompatible, "Option {option} of {keyword} was added"},
        {R::LIMIT_WIDENED, "LIMIT_WIDENED", kCompatible,
         "Option {option} of {keyword} accepts more values: {old} became {new}"},
        {R::LOOKUP_NAME_ADDED, "LOOKUP_NAME_ADDED", kCompatible,
         "Option {option} of {keyword} accepts the new name {new}"},
        {R::ALIAS_ADDED, "ALIAS_ADDED", kCompatible, "Alias {keyword} of {new} was added"},
        {R::KEYWORD_ID_CHANGED, "KEYWORD_ID_CHANGED", kCompatible,
         "The ID of command {keyword} changed from {old} to {new}"},
        {R::OPTION_ID_CHANGED, "OPTION_ID_CHANGED", kCompatible,
         "The ID of option {option} of {keyword} changed from {old} to {new}"},
        {R::SUMMARY_CHANGED, "SUMMARY_CHANGED", kCompatible, "The summary of {keyword} changed"},
        {R::DESCRIPTION_CHANGED, "DESCRIPTION_CHANGED", kCompatible, "The description of {keyword} changed"},
        {R::OPERAND_SYNOPSIS_CHANGED, "OPERAND_SYNOPSIS_CHANGED", kCompatible,
         "The operand synopsis of {keyword} changed"},
        {R::OPERAND_DESCRIPTION_CHANGED, "OPERAND_DESCRIPTION_CHANGED", kCompatible,
         "The operand description of {keyword} changed"},
        {R::OPTION_DESCRIPTION_CHANGED, "OPTION_DESCRIPTION_CHANGED", kCompatible,
         "The description of option {option} of {keyword} changed"},
    });
}();

// A flag's rules: the one for giving it and, unless the two are one rule
// (a change either way), the one for dropping it.
constexpr std::size_t flagRuleCount() {
    std::size_t count = 0;
    for (const DirectiveSpec& row : kDirectives)
        if (row.isFlag()) count += row.given.name == row.dropped.name ? 1 : 2;
    return count;
}

}  // namespace rules

inline constexpr std::size_t kRuleCount = rules::kOwnRules.size() + rules::flagRuleCount();

inline constexpr auto kRules = [] {
    std::array<RuleInfo, kRuleCount> all{};
    std::size_t next = 0;
    for (const RuleInfo& rule : rules::kOwnRules) all[next++] = rule;
    auto add = [&](const ChangeRule& rule) {
        all[next] = {static_cast<Rule>(next), rule.name, rule.category, rule.message};
        ++next;
    };
    for (const DirectiveSpec& row : kDirectives) {
        if (!row.isFlag()) continue;
        add(row.given);
        if (row.dropped.name != row.given.name) add(row.dropped);
    }
    return all;
}();

// The table is indexed by the rule's number.
static_assert([] {
    for (std::size_t i = 0; i < kRules.size(); ++i)
        if (static_cast<std::size_t>(kRules[i].rule) != i) return false;
    return true;
}());

inline const RuleInfo& ruleInfo(Rule rule) { return kRules[static_cast<std::size_t>(rule)]; }

// The rule of giving (or else dropping) the flag of a directive row.
Rule flagRule(const DirectiveSpec& row, bool given);

// The rule's place in the byte-wise order of the rule names, as reports
// sort the changes of one keyword or option.
std::size_t ruleNameRank(Rule rule);

}  // namespace quillet::diff
