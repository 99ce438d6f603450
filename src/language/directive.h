#pragma once

#include <array>
#include <cstddef>
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
inline constexpr std::size_t kTextFieldCount = static_cast<std::size_t>(TextField::OptionDescription) + 1;

// Where a flag shows in the outputs.
enum class FlagOutput : std::uint8_t {
    SourceLine,      // `sourceLine`, in the registration of its keyword or option
    ModelNameLines,  // `sourceLine`, then the line of the token count, which the source writer adds
    Reference,       // no source line: the reference writers leave the keyword out
    Nowhere,         // kept in the model, and so compared by the diff, but written nowhere
};

// What a change means for a command script written for the older definition.
enum class ChangeCategory : std::uint8_t {
    Breaking,    // a script that ran before may now be refused
    Behaviour,   // the script still runs but may mean something else
    Compatible,  // every script means what it meant
};

// A rule of quillet-diff: its stable name, its category and its sentence, in
// which {keyword}, {option}, {old} and {new} stand for the change's words.
struct ChangeRule {
    std::string_view name{};
    ChangeCategory category = ChangeCategory::Compatible;
    std::string_view message{};
};

// One row per directive word: everything the reader, the writers, the diff,
// the linter and the guide know of it. The refusal texts are the tool's own,
// their differences in wording included.
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
    // A flag's line in the generated source, written while the flag is in
    // effect, and the diff's rules for giving and for dropping it.
    FlagOutput output = FlagOutput::SourceLine;
    std::string_view sourceLine{};
    ChangeRule given{};
    ChangeRule dropped{};
    // For the guide, the linter and the language server: the arguments as
    // the guide's directive table lists them, and what the directive does.
    std::string_view synopsis{};
    std::string_view description{};

    constexpr bool isFlag() const { return keywordFlag != nullptr || optionFlag != nullptr; }
};

namespace rows {

using K = KeywordDef;
using O = OptionDef;
using D = Directive;
constexpr ChangeCategory kBreaking = ChangeCategory::Breaking;
constexpr ChangeCategory kBehaviour = ChangeCategory::Behaviour;
constexpr ChangeCategory kCompatible = ChangeCategory::Compatible;

constexpr DirectiveSpec documented(DirectiveSpec spec, std::string_view synopsis, std::string_view description) {
    spec.synopsis = synopsis;
    spec.description = description;
    return spec;
}

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
            .checked = CheckedWhen::OnArrival, .refusal = refusal, .keywordFlag = flag, .flagValue = value,
            .synopsis = "none"};
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

// What the flag writes and what the diff says of it.
constexpr DirectiveSpec writes(DirectiveSpec spec, FlagOutput output, std::string_view sourceLine, ChangeRule given,
                               ChangeRule dropped, std::string_view description) {
    spec.output = output;
    spec.sourceLine = sourceLine;
    spec.given = given;
    spec.dropped = dropped;
    spec.description = description;
    return spec;
}
constexpr DirectiveSpec writes(DirectiveSpec spec, std::string_view sourceLine, ChangeRule given, ChangeRule dropped,
                               std::string_view description) {
    return writes(spec, FlagOutput::SourceLine, sourceLine, given, dropped, description);
}

}  // namespace rows

inline constexpr auto kDirectives = [] {
    using namespace rows;
    const Needs keyword = Needs::Keyword;
    const Needs keywordAndOption = Needs::KeywordAndOption;
    return std::to_array<DirectiveSpec>({
        documented(open("KEYWORD:", D::KEYWORD, Arguments::Keyword), "name, ID",
                   "Starts a command: the name scripts type and the ID of the generated code."),
        documented(needing("KEY_DESCRIPTION:", D::KEY_DESCRIPTION, Arguments::Text, keyword,
                           "The KEY_DESCRIPTION command must be specified after a KEYWORD:\n",
                           TextField::KeywordDescription),
                   "any words", "The first paragraph of the command's reference topic."),
        documented(needing("OPTION:", D::OPTION, Arguments::Option, keyword,
                           "The OPTION: command must be specified after a KEYWORD:\n"),
                   "name, ID, type, default", "Starts an option of the current command."),
        documented(needing("OPT_DESCRIPTION:", D::OPT_DESCRIPTION, Arguments::Text, keywordAndOption,
                           "The OPT_DESCRIPTION command must be specified after a KEYWORD:    and OPTION: command\n",
                           TextField::OptionDescription),
                   "any words", "The option's text in the command's reference topic."),
        documented(needing("OPT_LOOKUP:", D::OPT_LOOKUP, Arguments::OptLookup, keywordAndOption,
                           "The OPT_LOOKUP: command must be specified after a KEYWORD:    and OPTION: command\n"),
                   "exactly one: a table name",
                   "Gives an integer option the names of a lookup table, and the table's range as its limits."),
        documented(open("LOOKUP:", D::LOOKUP, Arguments::Lookup), "table name, then entries of three words",
                   "Defines a lookup table: its name, then each entry's ID, name and value."),
        documented(needing("OPT_MINIMUM:", D::OPT_MINIMUM, Arguments::Limit, keywordAndOption,
                           "The OPT_MINIMUM: command must be specified after a KEYWORD:    and OPTION: command\n"),
                   "exactly one: a limit", "The smallest value the option accepts."),
        documented(needing("OPT_MAXIMUM:", D::OPT_MAXIMUM, Arguments::Limit, keywordAndOption,
                           "The OPT_MAXIMUM: command must be specified after a KEYWORD:    and OPTION: command\n"),
                   "exactly one: a limit", "The largest value the option accepts."),
        [] {
            DirectiveSpec spec = writes(
                keywordFlag("KEY_OPERANDS_ARE_MODEL_NAME:", D::KEY_OPERANDS_ARE_MODEL_NAME,
                            "The KEY_OPERANDS_ARE_MODEL_NAME: command must appear after KEYWORD:\n",
                            &K::operandsAreModelName),
                FlagOutput::ModelNameLines, "\tcurrent_keyword->setOperandsAsModelName();\n",
                {"KEY_OPERANDS_ARE_MODEL_NAME_ADDED", kBehaviour,
                 "Command {keyword} now reads its operands as a model name"},
                {"KEY_OPERANDS_ARE_MODEL_NAME_REMOVED", kBehaviour,
                 "Command {keyword} no longer reads its operands as a model name"},
                "The command's operands name a model, in as many words as given (1 by default).");
            spec.arguments = Arguments::ModelName;
            spec.synopsis = "none or one";
            return spec;
        }(),
        writes(oncePerRun(keywordFlag("KEY_IS_DELETE:", D::KEY_IS_DELETE,
                                      "The KEY_IS_DELETE: command must appear after KEYWORD:\n", &K::isDelete),
                          "The KEY_IS_DELETE: command can be applied to only one keyword!\n"),
               "\tcurrent_keyword->makeDeleteKeyword();\n",
               {"KEY_IS_DELETE_ADDED", kBehaviour, "Command {keyword} became the delete command"},
               {"KEY_IS_DELETE_REMOVED", kBehaviour, "Command {keyword} is no longer the delete command"},
               "Makes the command the application's delete command."),
        writes(oncePerRun(keywordFlag("KEY_IS_RENAME:", D::KEY_IS_RENAME,
                                      "The KEY_IS_RENAME: command must appear after KEYWORD:\n", &K::isRename),
                          "The KEY_IS_RENAME: command can be applied to only one keyword!\n"),
               "\tcurrent_keyword->makeRenameKeyword();\n",
               {"KEY_IS_RENAME_ADDED", kBehaviour, "Command {keyword} became the rename command"},
               {"KEY_IS_RENAME_REMOVED", kBehaviour, "Command {keyword} is no longer the rename command"},
               "Makes the command the application's rename command."),
        // Takes effect when it is left, so that it marks the option in force then.
        writes({.word = "OPT_READONLY:", .directive = D::OPT_READONLY, .arguments = Arguments::Ignored,
                .needs = keywordAndOption, .checked = CheckedWhen::OnLeaving,
                .refusal = "The OPT_READONLY: command must be specified after a KEYWORD:    and OPTION: command\n",
                .optionFlag = &O::readOnly, .synopsis = "none"},
               "\tcurrent_option->makeReadOnly( );\n",
               {"OPTION_MADE_READ_ONLY", kBreaking, "Option {option} of {keyword} became read-only"},
               {"OPTION_MADE_WRITABLE", kCompatible, "Option {option} of {keyword} is no longer read-only"},
               "Scripts cannot set the option; the reference leaves it out."),
        writes(keywordFlag("KEY_NO_DEFAULTS:", D::KEY_NO_DEFAULTS,
                           "The KEY_NO_DEFAULTS: command must appear after KEYWORD:\n", &K::noDefaults),
               "\tcurrent_keyword->setNoDefaults();\n",
               {"KEY_NO_DEFAULTS_ADDED", kBehaviour, "Command {keyword} no longer applies option defaults"},
               {"KEY_NO_DEFAULTS_REMOVED", kBehaviour, "Command {keyword} now applies option defaults"},
               "The command does not apply its options' defaults."),
        writes(keywordFlag("KEY_OPERANDS_NEED_FORMATTING:", D::KEY_OPERANDS_NEED_FORMATTING,
                           "KEY_OPERANDS_NEED_FORMATTING: command must appear after KEYWORD:\n",
                           &K::operandsNeedFormatting),
               "\tcurrent_keyword->setOperandsNeedFormatting();\n",
               {"KEY_OPERANDS_NEED_FORMATTING_ADDED", kBehaviour, "Command {keyword} now formats its operands"},
               {"KEY_OPERANDS_NEED_FORMATTING_REMOVED", kBehaviour, "Command {keyword} no longer formats its operands"},
               "The command formats its operands."),
        writes(withPrerequisite(keywordFlag("KEY_NO_NEW_MODEL:", D::KEY_NO_NEW_MODEL,
                                            "KEY_NO_NEW_MODEL : command must appear after KEYWORD:\n",
                                            &K::noNewModel),
                                &K::operandsAreModelName,
                                "KEY_NO_NEW_MODEL : command must appear after KEY_OPERANDS_ARE_MODEL_NAME:\n"),
               "\tcurrent_keyword->setNoNewModel();\n",
               {"KEY_NO_NEW_MODEL_ADDED", kBehaviour, "Command {keyword} no longer makes a new model from its operands"},
               {"KEY_NO_NEW_MODEL_REMOVED", kBehaviour, "Command {keyword} may make a new model from its operands"},
               "The command makes no new model from the model name of its operands."),
        writes(keywordFlag("KEY_ALLOW_BLANK_OPERANDS:", D::KEY_ALLOW_BLANK_OPERANDS,
                           "KEY_ALLOW_BLANK_OPERANDS : command must appear after KEYWORD:\n", &K::noBlankOperands,
                           false),
               "\tcurrent_keyword->setAcceptBlankOperands();\n",
               {"KEY_ALLOW_BLANK_OPERANDS_ADDED", kCompatible, "Command {keyword} now accepts blank operands"},
               {"KEY_ALLOW_BLANK_OPERANDS_REMOVED", kBreaking, "Command {keyword} no longer accepts blank operands"},
               "The command accepts blank operands."),
        writes(withPrerequisite(keywordFlag("KEY_OPERANDS_REVERSE_FOR_NAME:", D::KEY_OPERANDS_REVERSE_FOR_NAME,
                                            "KEY_OPERANDS_REVERSE_FOR_NAME: command must appear after KEYWORD:\n",
                                            &K::operandsReverseForName),
                                &K::operandsNeedFormatting,
                                "KEY_OPERANDS_REVERSE_FOR_NAME: command must appear after "
                                "KEY_OPERANDS_NEED_FORMATTING:\n"),
               "\tcurrent_keyword->setOperandsReverseForName();\n",
               {"KEY_OPERANDS_REVERSE_FOR_NAME_ADDED", kBehaviour,
                "Command {keyword} now reverses its operands to form the name"},
               {"KEY_OPERANDS_REVERSE_FOR_NAME_REMOVED", kBehaviour,
                "Command {keyword} no longer reverses its operands to form the name"},
               "The command reverses its formatted operands to form the name."),
        writes(keywordFlag("KEY_NO_OPTIONS:", D::KEY_NO_OPTIONS,
                           "The KEY_NO_OPTIONS: command must appear after KEYWORD:\n", &K::noOptions),
               "\tcurrent_keyword->setNoOptions();\n",
               {"KEY_NO_OPTIONS_ADDED", kBreaking, "Command {keyword} no longer accepts options"},
               {"KEY_NO_OPTIONS_REMOVED", kCompatible, "Command {keyword} now accepts options"},
               "The command accepts no options."),
        writes({.word = "OPT_LOOKUP_CASE_SENSITIVE:", .directive = D::OPT_LOOKUP_CASE_SENSITIVE,
                .arguments = Arguments::Ignored, .needs = keywordAndOption, .checked = CheckedWhen::OnArrival,
                .refusal = "The OPT_LOOKUP_CASE_SENSITIVE: command must be specified after a KEYWORD: and an "
                           "OPTION: command\n",
                .optionFlag = &O::lookupCaseSensitive, .optionPrerequisite = &O::hasLookupTable,
                .prerequisiteRefusal = "The OPT_LOOKUP_CASE_SENSITIVE: command must be specified only for an "
                                       "option which already has a lookup table.\n",
                .synopsis = "none"},
               "\tcurrent_option->makeLookupCaseSensitive( );\n",
               {"LOOKUP_CASE_SENSITIVITY_CHANGED", kBehaviour,
                "The names of option {option} of {keyword} became {new}"},
               {"LOOKUP_CASE_SENSITIVITY_CHANGED", kBehaviour,
                "The names of option {option} of {keyword} became {new}"},
               "The option's lookup names must match in letter case."),
        writes(keywordFlag("KEY_NO_DOCUMENTATION:", D::KEY_NO_DOCUMENTATION,
                           "The KEY_NO_DOCUMENTATION: command must be specified after a KEYWORD: command\n",
                           &K::noDocumentation),
               FlagOutput::Reference, "",
               {"KEY_NO_DOCUMENTATION_ADDED", kCompatible, "Command {keyword} was left out of the reference"},
               {"KEY_NO_DOCUMENTATION_REMOVED", kCompatible, "Command {keyword} was added to the reference"},
               "Leaves the command out of the reference."),
        documented(needing("KEY_OPERAND_DESCRIPTION:", D::KEY_OPERAND_DESCRIPTION, Arguments::Text, keyword,
                           "The KEY_OPERAND_DESCRIPTION command must be specified after a KEYWORD:\n",
                           TextField::OperandDescription),
                   "any words", "The Operands section of the command's reference topic, below the synopsis."),
        // Refused in the words of KEY_NO_DOCUMENTATION:, as it always has been.
        writes(keywordFlag("KEY_SHORT_DOCUMENTATION:", D::KEY_SHORT_DOCUMENTATION,
                           "The KEY_NO_DOCUMENTATION: command must be specified after a KEYWORD: command\n",
                           &K::shortDocumentation),
               FlagOutput::Nowhere, "",
               {"KEY_SHORT_DOCUMENTATION_ADDED", kCompatible, "Command {keyword} was marked for short documentation"},
               {"KEY_SHORT_DOCUMENTATION_REMOVED", kCompatible,
                "Command {keyword} is no longer marked for short documentation"},
               "Marks the command for short documentation; no output changes."),
        documented(needing("KEY_OPERAND_SYNOPSIS:", D::KEY_OPERAND_SYNOPSIS, Arguments::Text, keyword,
                           "The KEY_OPERAND_SYNOPSIS command must be specified after a KEYWORD:\n",
                           TextField::OperandSynopsis),
                   "any words", "The command's operands in its reference syntax line and Operands section."),
        writes(keywordFlag("KEY_PRESERVE_OPERANDS:", D::KEY_PRESERVE_OPERANDS,
                           "The KEY_PRESERVE_OPERANDS: command must appear after KEYWORD:\n", &K::preserveOperands),
               "\tcurrent_keyword->setPreserveOperands();\n",
               {"KEY_PRESERVE_OPERANDS_ADDED", kBehaviour, "Command {keyword} now keeps its operands as written"},
               {"KEY_PRESERVE_OPERANDS_REMOVED", kBehaviour,
                "Command {keyword} no longer keeps its operands as written"},
               "The command keeps its operands as written."),
        writes(keywordFlag("KEY_DEPRECATED:", D::KEY_DEPRECATED,
                           "The KEY_DEPRECATED: command must appear after KEYWORD:\n", &K::deprecated),
               "\tcurrent_keyword->setDeprecated();\n",
               {"KEYWORD_DEPRECATED", kCompatible, "Command {keyword} was deprecated"},
               {"KEYWORD_UNDEPRECATED", kCompatible, "Command {keyword} is no longer deprecated"},
               "Marks the command as deprecated."),
        documented(needing("KEY_SUMMARY:", D::KEY_SUMMARY, Arguments::Text, keyword,
                           "The KEY_SUMMARY command must be specified after a KEYWORD:\n", TextField::KeywordSummary),
                   "any words", "The command's one-line summary, registered with it in the generated source."),
    });
}();

inline constexpr std::size_t kDirectiveCount = kDirectives.size();

// The row's place in the table, for arrays kept per directive.
inline std::size_t rowIndex(const DirectiveSpec& spec) { return static_cast<std::size_t>(&spec - kDirectives.data()); }

// The row of a directive.
constexpr const DirectiveSpec& directiveRow(Directive directive) {
    for (const DirectiveSpec& row : kDirectives)
        if (row.directive == directive) return row;
    return kDirectives[0];
}

// The row of a directive word, or null for an argument. Matched exactly.
const DirectiveSpec* findDirective(std::string_view word);

}  // namespace quillet
