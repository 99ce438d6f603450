#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillet::diff {

// What a change means for a script written for the old definition.
enum class Category : std::uint8_t {
    Breaking,    // a script that ran before may now be refused
    Behaviour,   // the script still runs but may mean something else
    Compatible,  // every script means what it meant
};

std::string_view categoryName(Category category);

// Every kind of change the comparer reports. The names are part of the
// output and stay stable.
enum class Rule : std::uint8_t {
    KEYWORD_REMOVED,
    OPTION_REMOVED,
    OPTION_TYPE_CHANGED,
    LIMIT_NARROWED,
    LOOKUP_NAME_REMOVED,
    OPTION_MADE_READ_ONLY,
    ALIAS_REMOVED,
    KEY_NO_OPTIONS_ADDED,
    KEY_ALLOW_BLANK_OPERANDS_REMOVED,

    DEFAULT_CHANGED,
    LOOKUP_VALUE_CHANGED,
    LOOKUP_CASE_SENSITIVITY_CHANGED,
    ALIAS_TARGET_CHANGED,
    KEYWORD_MADE_ALIAS,
    ALIAS_MADE_KEYWORD,
    MODEL_NAME_TOKENS_CHANGED,
    KEY_OPERANDS_ARE_MODEL_NAME_ADDED,
    KEY_OPERANDS_ARE_MODEL_NAME_REMOVED,
    KEY_NO_NEW_MODEL_ADDED,
    KEY_NO_NEW_MODEL_REMOVED,
    KEY_OPERANDS_NEED_FORMATTING_ADDED,
    KEY_OPERANDS_NEED_FORMATTING_REMOVED,
    KEY_OPERANDS_REVERSE_FOR_NAME_ADDED,
    KEY_OPERANDS_REVERSE_FOR_NAME_REMOVED,
    KEY_PRESERVE_OPERANDS_ADDED,
    KEY_PRESERVE_OPERANDS_REMOVED,
    KEY_NO_DEFAULTS_ADDED,
    KEY_NO_DEFAULTS_REMOVED,
    KEY_IS_DELETE_ADDED,
    KEY_IS_DELETE_REMOVED,
    KEY_IS_RENAME_ADDED,
    KEY_IS_RENAME_REMOVED,

    KEYWORD_ADDED,
    OPTION_ADDED,
    LIMIT_WIDENED,
    LOOKUP_NAME_ADDED,
    OPTION_MADE_WRITABLE,
    ALIAS_ADDED,
    KEYWORD_DEPRECATED,
    KEYWORD_UNDEPRECATED,
    KEY_NO_OPTIONS_REMOVED,
    KEY_ALLOW_BLANK_OPERANDS_ADDED,
    KEY_NO_DOCUMENTATION_ADDED,
    KEY_NO_DOCUMENTATION_REMOVED,
    KEY_SHORT_DOCUMENTATION_ADDED,
    KEY_SHORT_DOCUMENTATION_REMOVED,
    KEYWORD_ID_CHANGED,
    OPTION_ID_CHANGED,
    SUMMARY_CHANGED,
    DESCRIPTION_CHANGED,
    OPERAND_SYNOPSIS_CHANGED,
    OPERAND_DESCRIPTION_CHANGED,
    OPTION_DESCRIPTION_CHANGED,
};

// `message` is a sentence in which {keyword}, {option}, {old} and {new}
// stand for the change's own words.
struct RuleInfo {
    Rule rule;
    std::string_view name;
    Category category;
    std::string_view message;
};

namespace rules {
using R = Rule;
constexpr Category kBreaking = Category::Breaking;
constexpr Category kBehaviour = Category::Behaviour;
constexpr Category kCompatible = Category::Compatible;
}  // namespace rules

inline constexpr auto kRules = [] {
    using namespace rules;
    return std::array<RuleInfo, 53>{{
        {R::KEYWORD_REMOVED, "KEYWORD_REMOVED", kBreaking, "Command {keyword} was removed"},
        {R::OPTION_REMOVED, "OPTION_REMOVED", kBreaking, "Option {option} of {keyword} was removed"},
        {R::OPTION_TYPE_CHANGED, "OPTION_TYPE_CHANGED", kBreaking,
         "Option {option} of {keyword} changed type from {old} to {new}"},
        {R::LIMIT_NARROWED, "LIMIT_NARROWED", kBreaking,
         "Option {option} of {keyword} accepts fewer values: {old} became {new}"},
        {R::LOOKUP_NAME_REMOVED, "LOOKUP_NAME_REMOVED", kBreaking,
         "Option {option} of {keyword} no longer accepts the name {old}"},
        {R::OPTION_MADE_READ_ONLY, "OPTION_MADE_READ_ONLY", kBreaking,
         "Option {option} of {keyword} became read-only"},
        {R::ALIAS_REMOVED, "ALIAS_REMOVED", kBreaking, "Alias {keyword} of {old} was removed"},
        {R::KEY_NO_OPTIONS_ADDED, "KEY_NO_OPTIONS_ADDED", kBreaking, "Command {keyword} no longer accepts options"},
        {R::KEY_ALLOW_BLANK_OPERANDS_REMOVED, "KEY_ALLOW_BLANK_OPERANDS_REMOVED", kBreaking,
         "Command {keyword} no longer accepts blank operands"},

        {R::DEFAULT_CHANGED, "DEFAULT_CHANGED", kBehaviour,
         "The default of option {option} of {keyword} changed from {old} to {new}"},
        {R::LOOKUP_VALUE_CHANGED, "LOOKUP_VALUE_CHANGED", kBehaviour,
         "Option {option} of {keyword}: the name {old} now stands for {new}"},
        {R::LOOKUP_CASE_SENSITIVITY_CHANGED, "LOOKUP_CASE_SENSITIVITY_CHANGED", kBehaviour,
         "The names of option {option} of {keyword} became {new}"},
        {R::ALIAS_TARGET_CHANGED, "ALIAS_TARGET_CHANGED", kBehaviour,
         "Alias {keyword} now stands for {new} instead of {old}"},
        {R::KEYWORD_MADE_ALIAS, "KEYWORD_MADE_ALIAS", kBehaviour, "Command {keyword} became an alias of {new}"},
        {R::ALIAS_MADE_KEYWORD, "ALIAS_MADE_KEYWORD", kBehaviour,
         "Alias {keyword} of {old} became a command of its own"},
        {R::MODEL_NAME_TOKENS_CHANGED, "MODEL_NAME_TOKENS_CHANGED", kBehaviour,
         "Command {keyword} takes {new} operand words as the model name instead of {old}"},
        {R::KEY_OPERANDS_ARE_MODEL_NAME_ADDED, "KEY_OPERANDS_ARE_MODEL_NAME_ADDED", kBehaviour,
         "Command {keyword} now reads its operands as a model name"},
        {R::KEY_OPERANDS_ARE_MODEL_NAME_REMOVED, "KEY_OPERANDS_ARE_MODEL_NAME_REMOVED", kBehaviour,
         "Command {keyword} no longer reads its operands as a model name"},
        {R::KEY_NO_NEW_MODEL_ADDED, "KEY_NO_NEW_MODEL_ADDED", kBehaviour,
         "Command {keyword} no longer makes a new model from its operands"},
        {R::KEY_NO_NEW_MODEL_REMOVED, "KEY_NO_NEW_MODEL_REMOVED", kBehaviour,
         "Command {keyword} may make a new model from its operands"},
        {R::KEY_OPERANDS_NEED_FORMATTING_ADDED, "KEY_OPERANDS_NEED_FORMATTING_ADDED", kBehaviour,
         "Command {keyword} now formats its operands"},
        {R::KEY_OPERANDS_NEED_FORMATTING_REMOVED, "KEY_OPERANDS_NEED_FORMATTING_REMOVED", kBehaviour,
         "Command {keyword} no longer formats its operands"},
        {R::KEY_OPERANDS_REVERSE_FOR_NAME_ADDED, "KEY_OPERANDS_REVERSE_FOR_NAME_ADDED", kBehaviour,
         "Command {keyword} now reverses its operands to form the name"},
        {R::KEY_OPERANDS_REVERSE_FOR_NAME_REMOVED, "KEY_OPERANDS_REVERSE_FOR_NAME_REMOVED", kBehaviour,
         "Command {keyword} no longer reverses its operands to form the name"},
        {R::KEY_PRESERVE_OPERANDS_ADDED, "KEY_PRESERVE_OPERANDS_ADDED", kBehaviour,
         "Command {keyword} now keeps its operands as written"},
        {R::KEY_PRESERVE_OPERANDS_REMOVED, "KEY_PRESERVE_OPERANDS_REMOVED", kBehaviour,
         "Command {keyword} no longer keeps its operands as written"},
        {R::KEY_NO_DEFAULTS_ADDED, "KEY_NO_DEFAULTS_ADDED", kBehaviour,
         "Command {keyword} no longer applies option defaults"},
        {R::KEY_NO_DEFAULTS_REMOVED, "KEY_NO_DEFAULTS_REMOVED", kBehaviour,
         "Command {keyword} now applies option defaults"},
        {R::KEY_IS_DELETE_ADDED, "KEY_IS_DELETE_ADDED", kBehaviour, "Command {keyword} became the delete command"},
        {R::KEY_IS_DELETE_REMOVED, "KEY_IS_DELETE_REMOVED", kBehaviour,
         "Command {keyword} is no longer the delete command"},
        {R::KEY_IS_RENAME_ADDED, "KEY_IS_RENAME_ADDED", kBehaviour, "Command {keyword} became the rename command"},
        {R::KEY_IS_RENAME_REMOVED, "KEY_IS_RENAME_REMOVED", kBehaviour,
         "Command {keyword} is no longer the rename command"},

        {R::KEYWORD_ADDED, "KEYWORD_ADDED", kCompatible, "Command {keyword} was added"},
        {R::OPTION_ADDED, "OPTION_ADDED", kCompatible, "Option {option} of {keyword} was added"},
        {R::LIMIT_WIDENED, "LIMIT_WIDENED", kCompatible,
         "Option {option} of {keyword} accepts more values: {old} became {new}"},
        {R::LOOKUP_NAME_ADDED, "LOOKUP_NAME_ADDED", kCompatible,
         "Option {option} of {keyword} accepts the new name {new}"},
        {R::OPTION_MADE_WRITABLE, "OPTION_MADE_WRITABLE", kCompatible,
         "Option {option} of {keyword} is no longer read-only"},
        {R::ALIAS_ADDED, "ALIAS_ADDED", kCompatible, "Alias {keyword} of {new} was added"},
        {R::KEYWORD_DEPRECATED, "KEYWORD_DEPRECATED", kCompatible, "Command {keyword} was deprecated"},
        {R::KEYWORD_UNDEPRECATED, "KEYWORD_UNDEPRECATED", kCompatible, "Command {keyword} is no longer deprecated"},
        {R::KEY_NO_OPTIONS_REMOVED, "KEY_NO_OPTIONS_REMOVED", kCompatible, "Command {keyword} now accepts options"},
        {R::KEY_ALLOW_BLANK_OPERANDS_ADDED, "KEY_ALLOW_BLANK_OPERANDS_ADDED", kCompatible,
         "Command {keyword} now accepts blank operands"},
        {R::KEY_NO_DOCUMENTATION_ADDED, "KEY_NO_DOCUMENTATION_ADDED", kCompatible,
         "Command {keyword} was left out of the reference"},
        {R::KEY_NO_DOCUMENTATION_REMOVED, "KEY_NO_DOCUMENTATION_REMOVED", kCompatible,
         "Command {keyword} was added to the reference"},
        {R::KEY_SHORT_DOCUMENTATION_ADDED, "KEY_SHORT_DOCUMENTATION_ADDED", kCompatible,
         "Command {keyword} was marked for short documentation"},
        {R::KEY_SHORT_DOCUMENTATION_REMOVED, "KEY_SHORT_DOCUMENTATION_REMOVED", kCompatible,
         "Command {keyword} is no longer marked for short documentation"},
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
    }};
}();

// The table is indexed by the rule's number.
static_assert([] {
    for (std::size_t i = 0; i < kRules.size(); ++i)
        if (static_cast<std::size_t>(kRules[i].rule) != i) return false;
    return true;
}());

inline const RuleInfo& ruleInfo(Rule rule) { return kRules[static_cast<std::size_t>(rule)]; }

// The rule's place in the byte-wise order of the rule names, as reports
// sort the changes of one keyword or option.
std::size_t ruleNameRank(Rule rule);

}  // namespace quillet::diff
