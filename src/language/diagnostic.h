#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <string_view>

#include "model/reporter.h"

namespace quillet {

// The rules of the tool's refusals, as quillet-lint names them; the
// linter's own rules follow these.
enum class RefusalRule : std::uint8_t {
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
    None,  // a message that only follows a refusal or reports progress
};

// Every message the reader can raise.
enum class DiagnosticId : std::uint8_t {
    CannotTokenize,
    DirectiveRefused,  // a word of the directive table: out of place, lacking its flag, or given twice
    SecondUse,
    ErrorWithDefinitionOnLine,
    ErrorProcessingCommand,
    CurrentKeyword,
    CurrentOption,
    ErrorWithDefinition,
    KeywordIncomplete,
    KeywordSyntax,
    OptionIncomplete,
    OptionSyntax,
    OptLookupIncomplete,
    OptLookupSyntax,
    KeywordTooManyArguments,
    OptionTooManyArguments,
    ExtraText,
    KeywordNameTaken,
    KeywordNameConflict,
    KeywordIdTaken,
    KeywordIdConflict,
    OptionNameTaken,
    OptionIdTaken,
    OptionIdConflict,
    NameConflict,  // the second line of option and lookup table names
    UnknownType,
    BadDefaultValue,
    BadDoubleDefault,
    BadBooleanDefault,
    ModelNameMisplaced,
    ModelNameExtra,
    OptLookupExtra,
    LookupOnNonInteger,
    OptionNotInteger,
    UnknownLookupTable,
    UnknownLookupTableHint,
    MinimumWrongType,
    MaximumWrongType,
    MinimumExtra,
    MaximumExtra,
    MinimumInvalid,
    MaximumInvalid,
    MinimumAboveDefault,
    MaximumBelowDefault,
    DoubleMinimumAboveDefault,
    DoubleMaximumBelowDefault,
    LimitByEntryId,
    LookupNameTaken,
    LookupIdTaken,
    LookupIdConflict,
    LookupValueBad,
    ChangingMode,
    CreatingKeyword,
    CreatingOption,
    KeywordsFound,
};

struct DiagnosticSpec {
    DiagnosticId id;
    Channel channel;
    RefusalRule rule;    // of a refusal's first message
    const char* format;  // printf, exactly as the tool prints it
    bool summary = false;  // the driver's summary of a refusal, which repeats it
};

inline constexpr auto kDiagnostics = [] {
    using D = DiagnosticId;
    using R = RefusalRule;
    constexpr Channel E = Channel::Error;
    return std::to_array<DiagnosticSpec>({
        {D::CannotTokenize, E, R::UnclosedQuote, "Cannot tokenize line %d of input file\n"},
        {D::DirectiveRefused, E, R::MisplacedDirective, "%s"},
        {D::SecondUse, E, R::OncePerFile, "%s"},
        {D::ErrorWithDefinitionOnLine, E, R::None, "Error with definition on line %d\n", true},
        {D::ErrorProcessingCommand, E, R::None, "Error processing command on line: %d\n", true},
        {D::CurrentKeyword, E, R::None, "Currently processing keyword: '%s'\n", true},
        {D::CurrentOption, E, R::None, "Currently processing option: '%s'\n", true},
        {D::ErrorWithDefinition, E, R::None, "Error with definition\n", true},
        {D::KeywordIncomplete, E, R::IncompleteDirective, "The KEYWORD: command defined on line: %d is not complete\n"},
        {D::KeywordSyntax, E, R::None, "The syntax is: 'KEYWORD: keyword_text keyword_ID' \n"},
        {D::OptionIncomplete, E, R::IncompleteDirective, "The OPTION: command defined on line: %d is not complete\n"},
        {D::OptionSyntax, E, R::None, "The syntax is: 'OPTION: option_name option_ID nq_type'\n"},
        {D::OptLookupIncomplete, E, R::IncompleteDirective, "The OPTION_LOOKUP: command is not complete \n"},
        {D::OptLookupSyntax, E, R::None, "The syntax is: 'OPT_LOOKUP: LOOKUP_TABLE_NAME\n"},
        {D::KeywordTooManyArguments, E, R::ExtraArgument, "Too many args for the KEYWORD: command \n"},
        {D::OptionTooManyArguments, E, R::ExtraArgument, "Too many args for the OPTION: command \n"},
        {D::ExtraText, E, R::None, "  Extra text = %s\n"},
        {D::KeywordNameTaken, E, R::DuplicateName, "Keyword name '%s' is not unique\n"},
        {D::KeywordNameConflict, E, R::None, "Conflict found with : '%s'\n"},
        {D::KeywordIdTaken, E, R::DuplicateName, "ID name '%s' is not unique:\n"},
        {D::KeywordIdConflict, E, R::None, "Conflict with: '%s' \n"},
        {D::OptionNameTaken, E, R::DuplicateName, "Option name '%s' is not unique to three letters\n"},
        {D::OptionIdTaken, E, R::DuplicateName, "ID name '%s' is not unique:\n"},
        {D::OptionIdConflict, E, R::None, "Conflict is with: '%s' \n"},
        {D::NameConflict, E, R::None, "Conflict with: '%s' \n"},
        {D::UnknownType, E, R::UnknownType, "Unknown type for current option: %s\n"},
        {D::BadDefaultValue, E, R::BadDefault, "Bad default value for OPTION: defined on line %d\n"},
        {D::BadDoubleDefault, E, R::BadDefault, "Bad double default value: '%s'\n"},
        {D::BadBooleanDefault, E, R::BadDefault, "Bad boolean default value: '%s'\n"},
        {D::ModelNameMisplaced, E, R::MisplacedDirective,
         "The setNumTokensInModelName: command must be specified after   a KEYWORD: command\n"},
        {D::ModelNameExtra, E, R::ExtraArgument,
         "KEY_OPERANDS_ARE_MODEL_NAME: has only a single argument: '%s' is unknown\n"},
        {D::OptLookupExtra, E, R::ExtraArgument, "OPT_LOOKUP requires only a single argument: '%s' is an error\n"},
        {D::LookupOnNonInteger, E, R::WrongOptionType, "Cannot add lookup table to non-integer type\n"},
        {D::OptionNotInteger, E, R::None, "The option declared on line %d is not an integer\n"},
        {D::UnknownLookupTable, E, R::UnknownLookupTable, "'%s' does not refer to an existing lookup table\n"},
        {D::UnknownLookupTableHint, E, R::None,
         "OPT_LOOKUP: requires the name of an existing lookup table\n which has been defined with the LOOKUP: "
         "command\n"},
        {D::MinimumWrongType, E, R::WrongOptionType, "The OPT_MINIMUM: command is only for integer and double types\n"},
        {D::MaximumWrongType, E, R::WrongOptionType, "The OPT_MAXIMUM: command is only for integer and double types\n"},
        {D::MinimumExtra, E, R::ExtraArgument, "OPT_MINIMUM: requires only a single argument: '%s' is unknown\n"},
        {D::MaximumExtra, E, R::ExtraArgument, "OPT_MAXIMUM: requires only a single argument: '%s' is unknown\n"},
        {D::MinimumInvalid, E, R::BadLimit, "OPT_MINIMUM: invalid value: '%s' \n"},
        {D::MaximumInvalid, E, R::BadLimit, "OPT_MAXIMUM: invalid value: '%s' \n"},
        {D::MinimumAboveDefault, Channel::StandardError, R::BadLimit,
         "Minimum value :'%d' is larger than the default value '%d'\n"},
        {D::MaximumBelowDefault, Channel::StandardError, R::BadLimit,
         "Maximum value :'%d' is less than the default value '%d'\n"},
        {D::DoubleMinimumAboveDefault, Channel::StandardError, R::BadLimit,
         "Minimum value :'%g' is larger than the default value '%g'\n"},
        {D::DoubleMaximumBelowDefault, Channel::StandardError, R::BadLimit,
         "Maximum value :'%g' is less than the default value '%g'\n"},
        {D::LimitByEntryId, Channel::ErrorDebug, R::None, "  Found Table Name entry (%s). Value is %d\n"},
        {D::LookupNameTaken, E, R::DuplicateName, "Lookup name '%s' is not unique:\n"},
        {D::LookupIdTaken, E, R::DuplicateName, "Lookup id '%s' is not unique:\n"},
        {D::LookupIdConflict, E, R::None, "Conflict with:'%s'\n"},
        {D::LookupValueBad, E, R::BadLookupValue, "Value could not be parsed: '%s'\n"},
        {D::ChangingMode, Channel::Progress, R::None, "Changing mode, new Mode = %s (enum=%d)\n"},
        {D::CreatingKeyword, Channel::Progress, R::None, "Creating keyword: '%s'\n"},
        {D::CreatingOption, Channel::Progress, R::None, "  Creating option: '%s'\n"},
        {D::KeywordsFound, Channel::Progress, R::None, "Have found %d keywords\n"},
    });
}();

// The table is indexed by identity.
static_assert([] {
    for (std::size_t i = 0; i < kDiagnostics.size(); ++i)
        if (static_cast<std::size_t>(kDiagnostics[i].id) != i) return false;
    return true;
}());

constexpr const DiagnosticSpec& diagnostic(DiagnosticId id) { return kDiagnostics[static_cast<std::size_t>(id)]; }

// Raises the message by its identity, in its words and on its channel.
template <typename... Args>
void raise(const Reporter& report, DiagnosticId id, Args... args) {
    // The texts are printf formats: a string_view would pass unnoticed.
    static_assert((!std::is_class_v<Args> && ...), "pass texts as NUL-terminated data()");
    const DiagnosticSpec& spec = diagnostic(id);
    report.raise(spec.channel, static_cast<int>(id), spec.format, args...);
}

}  // namespace quillet
