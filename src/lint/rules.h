#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quillet::lint {

// Errors are the tool's own refusals; warnings are what it lets through.
enum class RuleKind { Error, Warning };

struct Rule {
    std::string_view name;
    RuleKind kind;
    std::string_view summary;  // for SARIF and --help
};

// Every rule the linter reports, errors first. The warnings are each
// explained in docs/definition-language.md, "The linter's rules".
inline constexpr std::array<Rule, 25> kRules{{
    {"unclosed-quote", RuleKind::Error, "A double quote is not closed on its line."},
    {"incomplete-directive", RuleKind::Error, "A directive lacks arguments when the next one arrives."},
    {"misplaced-directive", RuleKind::Error, "A directive stands where its keyword or option is missing."},
    {"once-per-file", RuleKind::Error, "KEY_IS_DELETE: or KEY_IS_RENAME: is given a second time."},
    {"duplicate-name", RuleKind::Error, "A name or ID is defined twice."},
    {"extra-argument", RuleKind::Error, "A directive gets more words than it takes."},
    {"unknown-type", RuleKind::Error, "The type word of OPTION: is none of the four types."},
    {"bad-default", RuleKind::Error, "The default does not suit the option's type."},
    {"wrong-option-type", RuleKind::Error, "A lookup table or limit is given to an option of the wrong type."},
    {"unknown-lookup-table", RuleKind::Error, "OPT_LOOKUP: names no table defined before it."},
    {"bad-limit", RuleKind::Error, "A limit is no accepted value or contradicts the default."},
    {"bad-lookup-value", RuleKind::Error, "A lookup entry value is no integer."},
    {"long-line", RuleKind::Warning, "A line longer than 254 bytes silently ends the definition."},
    {"misspelt-directive", RuleKind::Warning, "A word looks like a misspelt directive and is taken as an argument."},
    {"trailing-characters", RuleKind::Warning, "A number has characters after it that are silently ignored."},
    {"number-out-of-range", RuleKind::Warning, "A number does not fit the type it is kept in."},
    {"unresolved-default", RuleKind::Warning, "A symbolic default names no entry of its lookup table and is dropped."},
    {"minimum-above-maximum", RuleKind::Warning, "An option's minimum is above its maximum."},
    {"default-outside-lookup-range", RuleKind::Warning,
     "A numeric default lies outside the range of the option's lookup table."},
    {"carriage-return", RuleKind::Warning, "Lines end in a carriage return (Windows line ends)."},
    {"string-literal-escape", RuleKind::Warning,
     "A text copied into a C++ string literal holds a backslash or a double quote."},
    {"unused-lookup-table", RuleKind::Warning, "No option uses the lookup table."},
    {"alias-unknown-keyword", RuleKind::Warning, "An alias names no keyword of the definition."},
    {"alias-layout", RuleKind::Warning, "The aliases file is not read the way its lines suggest."},
    {"max-errors", RuleKind::Error, "More errors than --max-errors were found."},
}};

using RuleId = std::size_t;  // index into kRules

// The rule of that name, or kRules.size() when there is none.
RuleId findRule(std::string_view name);
// The rule of one of the tool's own error messages.
RuleId ruleOfMessage(std::string_view message);

}  // namespace quillet::lint
