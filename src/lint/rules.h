#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "language/diagnostic.h"

namespace quillet::lint {

// Errors are the tool's own refusals; warnings are what it lets through.
enum class RuleKind { Error, Warning };

// A warning that means quillet reads the file otherwise than it looks (a
// line or a word lost, a directive taken as text): --werror-misreading makes
// just these errors, as the LINT option of quillet_generate() does.
enum class Reading { AsWritten, Misread };

// Every rule the linter reports, errors first: the tool's refusals, in the
// order of the language's refusal rules, then the warnings.
enum class RuleId : std::uint8_t {
    UnclosedQuote,
    IncompleteDirective,
    MisplacedDirective,
    OncePerFile,
    DuplicateName,
    ExtraArgument,
    UnknownType,
    BadDefault,
    WrongOptionType,
    UnknownLookupTable,
    BadLimit,
    BadLookupValue,
    LongLine,
    MisspeltDirective,
    TrailingCharacters,
    NumberOutOfRange,
    UnresolvedDefault,
    MinimumAboveMaximum,
    DefaultOutsideLookupRange,
    CarriageReturn,
    StringLiteralEscape,
    UnusedLookupTable,
    DroppedQuotes,
    ReplacedSetting,
    AliasUnknownKeyword,
    AliasLayout,
    MaxErrors,
};

struct Rule {
    RuleId id;
    std::string_view name;
    RuleKind kind;
    std::string_view summary;  // for SARIF and --help
    Reading reading = Reading::AsWritten;
};

// Every rule the linter reports, errors first. The warnings are each
// explained in docs/definition-language.md, "The linter's rules".
inline constexpr auto kRules = std::to_array<Rule>({
    {RuleId::UnclosedQuote, "unclosed-quote", RuleKind::Error, "A double quote is not closed on its line."},
    {RuleId::IncompleteDirective, "incomplete-directive", RuleKind::Error, "A directive lacks arguments when the next one arrives."},
    {RuleId::MisplacedDirective, "misplaced-directive", RuleKind::Error, "A directive stands where its keyword or option is missing."},
    {RuleId::OncePerFile, "once-per-file", RuleKind::Error, "KEY_IS_DELETE: or KEY_IS_RENAME: is given a second time."},
    {RuleId::DuplicateName, "duplicate-name", RuleKind::Error, "A name or ID is defined twice."},
    {RuleId::ExtraArgument, "extra-argument", RuleKind::Error, "A directive gets more words than it takes."},
    {RuleId::UnknownType, "unknown-type", RuleKind::Error, "The type word of OPTION: is none of the four types."},
    {RuleId::BadDefault, "bad-default", RuleKind::Error, "The default does not suit the option's type."},
    {RuleId::WrongOptionType, "wrong-option-type", RuleKind::Error, "A lookup table or limit is given to an option of the wrong type."},
    {RuleId::UnknownLookupTable, "unknown-lookup-table", RuleKind::Error, "OPT_LOOKUP: names no table defined before it."},
    {RuleId::BadLimit, "bad-limit", RuleKind::Error, "A limit is no accepted value or contradicts the default."},
    {RuleId::BadLookupValue, "bad-lookup-value", RuleKind::Error, "A lookup entry value is no integer."},
    {RuleId::LongLine, "long-line", RuleKind::Warning, "A line longer than 254 bytes silently ends the definition.", Reading::Misread},
    {RuleId::MisspeltDirective, "misspelt-directive", RuleKind::Warning, "A word looks like a misspelt directive and is taken as an argument.",
     Reading::Misread},
    {RuleId::TrailingCharacters, "trailing-characters", RuleKind::Warning, "A number has characters after it that are silently ignored."},
    {RuleId::NumberOutOfRange, "number-out-of-range", RuleKind::Warning, "A number does not fit the type it is kept in."},
    {RuleId::UnresolvedDefault, "unresolved-default", RuleKind::Warning, "A symbolic default names no entry of its lookup table and is dropped."},
    {RuleId::MinimumAboveMaximum, "minimum-above-maximum", RuleKind::Warning, "An option's minimum is above its maximum."},
    {RuleId::DefaultOutsideLookupRange, "default-outside-lookup-range", RuleKind::Warning,
     "A numeric default lies outside the range of the option's lookup table."},
    {RuleId::CarriageReturn, "carriage-return", RuleKind::Warning, "Lines end in a carriage return (Windows line ends).", Reading::Misread},
    {RuleId::StringLiteralEscape, "string-literal-escape", RuleKind::Warning,
     "A text copied into a C++ string literal holds a backslash or a double quote."},
    {RuleId::UnusedLookupTable, "unused-lookup-table", RuleKind::Warning, "No option uses the lookup table."},
    {RuleId::DroppedQuotes, "dropped-quotes", RuleKind::Warning, "A quoted word of a text loses its quotes.", Reading::Misread},
    {RuleId::ReplacedSetting, "replaced-setting", RuleKind::Warning,
     "A second OPT_MINIMUM:, OPT_MAXIMUM: or OPT_LOOKUP: silently replaces the first for the option."},
    {RuleId::AliasUnknownKeyword, "alias-unknown-keyword", RuleKind::Warning, "An alias names no keyword of the definition."},
    {RuleId::AliasLayout, "alias-layout", RuleKind::Warning, "The aliases file is not read the way its lines suggest."},
    {RuleId::MaxErrors, "max-errors", RuleKind::Error, "More errors than --max-errors were found."},
});

// The table is indexed by the rule, and its errors begin with the tool's
// refusals, rule for rule.
static_assert([] {
    for (std::size_t i = 0; i < kRules.size(); ++i)
        if (static_cast<std::size_t>(kRules[i].id) != i) return false;
    return static_cast<std::size_t>(RefusalRule::None) == static_cast<std::size_t>(RuleId::LongLine) &&
           kRules[static_cast<std::size_t>(RefusalRule::BadLookupValue)].id == RuleId::BadLookupValue;
}());

constexpr const Rule& rule(RuleId id) { return kRules[static_cast<std::size_t>(id)]; }
constexpr std::size_t index(RuleId id) { return static_cast<std::size_t>(id); }

// The linter's rule of one of the tool's refusals.
constexpr RuleId ruleOf(RefusalRule refusal) { return static_cast<RuleId>(refusal); }

// The rule a -W option names, if any.
std::optional<RuleId> ruleNamed(std::string_view name);

}  // namespace quillet::lint
