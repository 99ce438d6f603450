#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "model/keyword_def.h"
#include "model/option_def.h"

namespace quillet {

// The directive words of the definition language. The numbers are fixed (the
// progress messages print them); 6, 14 and 25 are unassigned.
enum class Directive : std::uint8_t {
    KEYWORD = 0,
    KEY_DESCRIPTION = 1,
    OPTION = 2,
    OPT_DESCRIPTION = 3,
    OPT_LOOKUP = 4,
    LOOKUP = 5,
    OPT_MINIMUM = 7,
    OPT_MAXIMUM = 8,
    KEY_OPERANDS_ARE_MODEL_NAME = 9,
    KEY_IS_DELETE = 10,
    KEY_IS_RENAME = 11,
    OPT_READONLY = 12,
    KEY_NO_DEFAULTS = 13,
    KEY_OPERANDS_NEED_FORMATTING = 15,
    KEY_NO_NEW_MODEL = 16,
    KEY_ALLOW_BLANK_OPERANDS = 17,
    KEY_OPERANDS_REVERSE_FOR_NAME = 18,
    KEY_NO_OPTIONS = 19,
    OPT_LOOKUP_CASE_SENSITIVE = 20,
    KEY_NO_DOCUMENTATION = 21,
    KEY_OPERAND_DESCRIPTION = 22,
    KEY_SHORT_DOCUMENTATION = 23,
    KEY_OPERAND_SYNOPSIS = 24,
    KEY_PRESERVE_OPERANDS = 26,
    KEY_DEPRECATED = 27,
    KEY_SUMMARY = 28,
};

// How the words after a directive are taken.
enum class Arguments : std::uint8_t {
    Keyword,    // name, then ID
    Option,     // name, ID, type word, default
    Text,       // every word appended to a text of the keyword or option
    ModelName,  // at most one word, kept as the keyword's token count
    OptLookup,  // exactly one lookup table name
    Limit,      // exactly one minimum or maximum
    Lookup,     // table name, then (entry ID, entry name, value) triples
    Ignored,    // a flag directive: any word is accepted and dropped
};

// What must be current for the directive, and when that is checked.
enum class Needs : std::uint8_t { Nothing, Keyword, KeywordAndOption };
enum class CheckedWhen : std::uint8_t { Never, OnArrival, OnEachArgument, OnLeaving };

// The texts a text directive accumulates into, while its record is open.
enum class TextField : std::uint8_t {
    None,
    KeywordDescription,
    KeywordSummary,
    OperandDescription,
    OperandSynopsis,
    OptionDescription,
};

// One row per directive word. The refusal texts are the tool's own, their
// differences in wording included.
struct DirectiveSpec {
    std::string_view word;
    Directive directive;
    Arguments arguments;
    Needs needs = Needs::Nothing;
    CheckedWhen checked = CheckedWhen::Never;
    const char* refusal = nullptr;  // when `needs` is not met
    // A flag directive sets one field of the keyword or of the option ...
    bool KeywordDef::*keywordFlag = nullptr;
    bool OptionDef::*optionFlag = nullptr;
    bool flagValue = true;
    // ... once another flag of the same record is set ...
    bool KeywordDef::*keywordPrerequisite = nullptr;
    bool OptionDef::*optionPrerequisite = nullptr;
    const char* prerequisiteRefusal = nullptr;
    // ... and, for some, on one keyword of the whole run only.
    const char* secondUseRefusal = nullptr;
    TextField text = TextField::None;
};

namespace rows {

using K = KeywordDef;
using O = OptionDef;
using D = Directive;

// A directive whose words are its arguments, with no requirement.
constexpr DirectiveSpec open(std::string_view word, Directive directive, Arguments arguments) {
    return {.word = word, .directive = directive, .arguments = arguments};
}

// A directive whose every argument needs the keyword (and option) in force.
constexpr DirectiveSpec needing(std::string_view word, Directive directive, Arguments arguments, Needs needs,
                                const char* refusal, TextField text = TextField::None) {
    return {.word = word, .directive = directive, .arguments = arguments, .needs = needs,
            .checked = CheckedWhen::OnEachArgument, .refusal = refusal, .text = text};
}

// A directive that sets a flag of the keyword in force when it arrives.
constexpr DirectiveSpec keywordFlag(std::string_view word, Directive directive, const char* refusal,
                                    bool KeywordDef::*flag, bool value = true) {
    return {.word = word, .directive = directive, .arguments = Arguments::Ignored, .needs = Needs::Keyword,
            .checked = CheckedWhen::OnArrival, .refusal = refusal, .keywordFlag = flag, .flagValue = value};
}

constexpr DirectiveSpec withPrerequisite(DirectiveSpec spec, bool KeywordDef::*flag, const char* refusal) {
    spec.keywordPrerequisite = flag;
    spec.prerequisiteRefusal = refusal;
    return spec;
}

constexpr DirectiveSpec oncePerRun(DirectiveSpec spec, const char* refusal) {
    spec.secondUseRefusal = refusal;
    return spec;
}

}  // namespace rows

inline constexpr std::array<DirectiveSpec, 26> kDirectives = [] {
    using namespace rows;
    const Needs keyword = Needs::Keyword;
    const Needs keywordAndOption = Needs::KeywordAndOption;
    return std::array<DirectiveSpec, 26>{{
        open("KEYWORD:", D::KEYWORD, Arguments::Keyword),
        needing("KEY_DESCRIPTION:", D::KEY_DESCRIPTION, Arguments::Text, keyword,
                "The KEY_DESCRIPTION command must be specified after a KEYWORD:\n", TextField::KeywordDescription),
        needing("OPTION:", D::OPTION, Arguments::Option, keyword,
                "The OPTION: command must be specified after a KEYWORD:\n"),
        needing("OPT_DESCRIPTION:", D::OPT_DESCRIPTION, Arguments::Text, keywordAndOption,
                "The OPT_DESCRIPTION command must be specified after a KEYWORD:    and OPTION: command\n",
                TextField::OptionDescription),
        needing("OPT_LOOKUP:", D::OPT_LOOKUP, Arguments::OptLookup, keywordAndOption,
                "The OPT_LOOKUP: command must be specified after a KEYWORD:    and OPTION: command\n"),
        open("LOOKUP:", D::LOOKUP, Arguments::Lookup),
        needing("OPT_MINIMUM:", D::OPT_MINIMUM, Arguments::Limit, keywordAndOption,
                "The OPT_MINIMUM: command must be specified after a KEYWORD:    and OPTION: command\n"),
        needing("OPT_MAXIMUM:", D::OPT_MAXIMUM, Arguments::Limit, keywordAndOption,
                "The OPT_MAXIMUM: command must be specified after a KEYWORD:    and OPTION: command\n"),
        [] {
            DirectiveSpec spec = keywordFlag("KEY_OPERANDS_ARE_MODEL_NAME:", D::KEY_OPERANDS_ARE_MODEL_NAME,
                                             "The KEY_OPERANDS_ARE_MODEL_NAME: command must appear after KEYWORD:\n",
                                             &K::operandsAreModelName);
            spec.arguments = Arguments::ModelName;
            return spec;
        }(),
        oncePerRun(keywordFlag("KEY_IS_DELETE:", D::KEY_IS_DELETE,
                               "The KEY_IS_DELETE: command must appear after KEYWORD:\n", &K::isDelete),
                   "The KEY_IS_DELETE: command can be applied to only one keyword!\n"),
        oncePerRun(keywordFlag("KEY_IS_RENAME:", D::KEY_IS_RENAME,
                               "The KEY_IS_RENAME: command must appear after KEYWORD:\n", &K::isRename),
                   "The KEY_IS_RENAME: command can be applied to only one keyword!\n"),
        // Takes effect when it is left, so that it marks the option in force then.
        {.word = "OPT_READONLY:", .directive = D::OPT_READONLY, .arguments = Arguments::Ignored,
         .needs = keywordAndOption, .checked = CheckedWhen::OnLeaving,
         .refusal = "The OPT_READONLY: command must be specified after a KEYWORD:    and OPTION: command\n",
         .optionFlag = &O::readOnly},
        keywordFlag("KEY_NO_DEFAULTS:", D::KEY_NO_DEFAULTS, "The KEY_NO_DEFAULTS: command must appear after KEYWORD:\n",
                    &K::noDefaults),
        keywordFlag("KEY_OPERANDS_NEED_FORMATTING:", D::KEY_OPERANDS_NEED_FORMATTING,
                    "KEY_OPERANDS_NEED_FORMATTING: command must appear after KEYWORD:\n", &K::operandsNeedFormatting),
        withPrerequisite(keywordFlag("KEY_NO_NEW_MODEL:", D::KEY_NO_NEW_MODEL,
                                     "KEY_NO_NEW_MODEL : command must appear after KEYWORD:\n", &K::noNewModel),
                         &K::operandsAreModelName,
                         "KEY_NO_NEW_MODEL : command must appear after KEY_OPERANDS_ARE_MODEL_NAME:\n"),
        keywordFlag("KEY_ALLOW_BLANK_OPERANDS:", D::KEY_ALLOW_BLANK_OPERANDS,
                    "KEY_ALLOW_BLANK_OPERANDS : command must appear after KEYWORD:\n", &K::noBlankOperands, false),
        withPrerequisite(keywordFlag("KEY_OPERANDS_REVERSE_FOR_NAME:", D::KEY_OPERANDS_REVERSE_FOR_NAME,
                                     "KEY_OPERANDS_REVERSE_FOR_NAME: command must appear after KEYWORD:\n",
                                     &K::operandsReverseForName),
                         &K::operandsNeedFormatting,
                         "KEY_OPERANDS_REVERSE_FOR_NAME: command must appear after KEY_OPERANDS_NEED_FORMATTING:\n"),
        keywordFlag("KEY_NO_OPTIONS:", D::KEY_NO_OPTIONS, "The KEY_NO_OPTIONS: command must appear after KEYWORD:\n",
                    &K::noOptions),
        {.word = "OPT_LOOKUP_CASE_SENSITIVE:", .directive = D::OPT_LOOKUP_CASE_SENSITIVE,
         .arguments = Arguments::Ignored, .needs = keywordAndOption, .checked = CheckedWhen::OnArrival,
         .refusal = "The OPT_LOOKUP_CASE_SENSITIVE: command must be specified after a KEYWORD: and an OPTION: "
                    "command\n",
         .optionFlag = &O::lookupCaseSensitive, .optionPrerequisite = &O::hasLookupTable,
         .prerequisiteRefusal = "The OPT_LOOKUP_CASE_SENSITIVE: command must be specified only for an option which "
                                "already has a lookup table.\n"},
        keywordFlag("KEY_NO_DOCUMENTATION:", D::KEY_NO_DOCUMENTATION,
                    "The KEY_NO_DOCUMENTATION: command must be specified after a KEYWORD: command\n",
                    &K::noDocumentation),
        needing("KEY_OPERAND_DESCRIPTION:", D::KEY_OPERAND_DESCRIPTION, Arguments::Text, keyword,
                "The KEY_OPERAND_DESCRIPTION command must be specified after a KEYWORD:\n",
                TextField::OperandDescription),
        // Refused in the words of KEY_NO_DOCUMENTATION:, as it always has been.
        keywordFlag("KEY_SHORT_DOCUMENTATION:", D::KEY_SHORT_DOCUMENTATION,
                    "The KEY_NO_DOCUMENTATION: command must be specified after a KEYWORD: command\n",
                    &K::shortDocumentation),
        needing("KEY_OPERAND_SYNOPSIS:", D::KEY_OPERAND_SYNOPSIS, Arguments::Text, keyword,
                "The KEY_OPERAND_SYNOPSIS command must be specified after a KEYWORD:\n", TextField::OperandSynopsis),
        keywordFlag("KEY_PRESERVE_OPERANDS:", D::KEY_PRESERVE_OPERANDS,
                    "The KEY_PRESERVE_OPERANDS: command must appear after KEYWORD:\n", &K::preserveOperands),
        keywordFlag("KEY_DEPRECATED:", D::KEY_DEPRECATED, "The KEY_DEPRECATED: command must appear after KEYWORD:\n",
                    &K::deprecated),
        needing("KEY_SUMMARY:", D::KEY_SUMMARY, Arguments::Text, keyword,
                "The KEY_SUMMARY command must be specified after a KEYWORD:\n", TextField::KeywordSummary),
    }};
}();

// The row of a directive word, or null for an argument. Matched exactly.
const DirectiveSpec* findDirective(std::string_view word);

}  // namespace quillet
