#include "reader/mode_machine.h"

#include "nqerr.h"
#include "reader/directive.h"

namespace quillet {

namespace {

bool fail(const RunContext& context, const char* message) {
    context.report.error("%s\n", message);
    return false;
}

bool fail(const RunContext& context, const char* first, const char* second) {
    context.report.error("%s%s\n", first, second);
    return false;
}

bool checkPreviousDirective(DefinitionSet& defs, const RunContext& context) {
    KeywordDef* keyword = defs.currentKeyword;
    OptionDef* option = defs.currentOption;
    // Only the directive right after KEYWORD: or OPTION: notices that it was
    // left incomplete.
    if (keyword != nullptr && defs.mode == KEYWORD && !keyword->isComplete) {
        context.report.error("%s%d%s\n", "The KEYWORD: command defined on line: ",
                    keyword->lineNumber, " is not complete");
        return fail(context, "The syntax is: 'KEYWORD: keyword_text keyword_ID' ");
    }
    // OPT_READONLY: takes effect when it is left.
    if (defs.mode == OPT_READONLY) {
        if (keyword == nullptr || option == nullptr)
            return fail(context, "The OPT_READONLY: command must be specified after a KEYWORD:",
                        "    and OPTION: command");
        option->readOnly = true;
    }
    if (option != nullptr && defs.mode == OPTION && !option->isComplete) {
        context.report.error("%s%d%s\n", "The OPTION: command defined on line: ",
                    option->lineNumber, " is not complete");
        return fail(context, "The syntax is: 'OPTION: option_name option_ID nq_type'");
    }
    return true;
}

// Flag directives are checked against the current records and applied on
// arrival. The message wordings differ from one another on purpose.
bool applyFlag(DefinitionSet& defs, const RunContext& context, int directive) {
    KeywordDef* keyword = defs.currentKeyword;
    OptionDef* option = defs.currentOption;
    switch (directive) {
    case OPT_LOOKUP_CASE_SENSITIVE:
        if (keyword == nullptr || option == nullptr)
            return fail(context, "The OPT_LOOKUP_CASE_SENSITIVE: command must be specified ",
                        "after a KEYWORD: and an OPTION: command");
        if (!option->hasLookupTable)
            return fail(context, "The OPT_LOOKUP_CASE_SENSITIVE: command must be specified ",
                        "only for an option which already has a lookup table.");
        option->lookupCaseSensitive = true;
        return true;
    case KEY_NO_DOCUMENTATION:
    case KEY_SHORT_DOCUMENTATION:
        if (keyword == nullptr)
            return fail(context, "The KEY_NO_DOCUMENTATION: command must be specified ", "after a KEYWORD: command");
        (directive == KEY_NO_DOCUMENTATION ? keyword->noDocumentation : keyword->shortDocumentation) = true;
        return true;
    case KEY_OPERANDS_ARE_MODEL_NAME:
        if (keyword == nullptr)
            return fail(context, "The KEY_OPERANDS_ARE_MODEL_NAME: command must appear after KEYWORD:");
        keyword->operandsAreModelName = true;
        defs.modelNameArgCount = 0;
        return true;
    case KEY_ALLOW_BLANK_OPERANDS:
        if (keyword == nullptr) return fail(context, "KEY_ALLOW_BLANK_OPERANDS : command must appear after KEYWORD:");
        keyword->noBlankOperands = false;
        return true;
    case KEY_NO_NEW_MODEL:
        if (keyword == nullptr) return fail(context, "KEY_NO_NEW_MODEL : command must appear after KEYWORD:");
        if (!keyword->operandsAreModelName)
            return fail(context, "KEY_NO_NEW_MODEL : command must appear after KEY_OPERANDS_ARE_MODEL_NAME:");
        keyword->noNewModel = true;
        return true;
    case KEY_OPERANDS_NEED_FORMATTING:
        if (keyword == nullptr)
            return fail(context, "KEY_OPERANDS_NEED_FORMATTING: command must appear after KEYWORD:");
        keyword->operandsNeedFormatting = true;
        return true;
    case KEY_OPERANDS_REVERSE_FOR_NAME:
        if (keyword == nullptr)
            return fail(context, "KEY_OPERANDS_REVERSE_FOR_NAME: command must appear after KEYWORD:");
        if (!keyword->operandsNeedFormatting)
            return fail(context, "KEY_OPERANDS_REVERSE_FOR_NAME: command must appear after ",
                        "KEY_OPERANDS_NEED_FORMATTING:");
        keyword->operandsReverseForName = true;
        return true;
    case KEY_NO_DEFAULTS:
        if (keyword == nullptr) return fail(context, "The KEY_NO_DEFAULTS: command must appear after KEYWORD:");
        keyword->noDefaults = true;
        return true;
    case KEY_NO_OPTIONS:
        if (keyword == nullptr) return fail(context, "The KEY_NO_OPTIONS: command must appear after KEYWORD:");
        keyword->noOptions = true;
        return true;
    case KEY_PRESERVE_OPERANDS:
        if (keyword == nullptr) return fail(context, "The KEY_PRESERVE_OPERANDS: command must appear after KEYWORD:");
        keyword->preserveOperands = true;
        return true;
    case KEY_DEPRECATED:
        if (keyword == nullptr) return fail(context, "The KEY_DEPRECATED: command must appear after KEYWORD:");
        keyword->deprecated = true;
        return true;
    case KEY_IS_DELETE:
        if (keyword == nullptr) return fail(context, "The KEY_IS_DELETE: command must appear after KEYWORD:");
        if (defs.deleteKeywordSeen) return fail(context, "The KEY_IS_DELETE: command can be applied to only one keyword!");
        keyword->isDelete = true;
        defs.deleteKeywordSeen = true;
        return true;
    case KEY_IS_RENAME:
        if (keyword == nullptr) return fail(context, "The KEY_IS_RENAME: command must appear after KEYWORD:");
        if (defs.renameKeywordSeen) return fail(context, "The KEY_IS_RENAME: command can be applied to only one keyword!");
        keyword->isRename = true;
        defs.renameKeywordSeen = true;
        return true;
    default:
        return true;
    }
}

// Argument counters belong to the directive being left. A lookup entry left
// with one or two of its three words is dropped here without a message.
bool leaveDirective(DefinitionSet& defs, const RunContext& context) {
    switch (defs.mode) {
    case OPT_MINIMUM:
        defs.minimumArgCount = 0;
        return true;
    case OPT_MAXIMUM:
        defs.maximumArgCount = 0;
        return true;
    case LOOKUP:
        defs.lookupTableStarted = false;
        defs.lookupArgCount = 0;
        return true;
    case OPT_LOOKUP:
        if (defs.optLookupArgCount != 1) {
            fail(context, "The OPTION_LOOKUP: command is not complete ");
            return fail(context, "The syntax is: 'OPT_LOOKUP: LOOKUP_TABLE_NAME");
        }
        defs.optLookupArgCount = 0;
        return true;
    default:
        return true;
    }
}

// An option opened before any keyword can never be completed, so it has no
// keyword to join. A closed record's texts are complete: giving back their
// growth slack keeps a large definition's memory close to its file size.
void closeOption(DefinitionSet& defs) {
    if (defs.currentOption != nullptr && defs.currentKeyword != nullptr) {
        defs.currentOption->description.shrink_to_fit();
        defs.currentKeyword->addOption(defs.currentOption);
    }
}

}  // namespace

bool changeMode(DefinitionSet& defs, const RunContext& context, int directive, int line) {
    if (!checkPreviousDirective(defs, context)) return false;
    if (!applyFlag(defs, context, directive)) return false;
    if (!leaveDirective(defs, context)) return false;

    const bool endOfInput = directive == MODE_END_OF_INPUT;
    if (directive == KEYWORD || endOfInput) {
        if (defs.currentKeyword != nullptr) {
            closeOption(defs);
            defs.currentOption = nullptr;
            defs.currentKeyword->description.shrink_to_fit();
            defs.currentKeyword->summary.shrink_to_fit();
            defs.keywords.push_back(defs.currentKeyword);
        }
        // At end of input this leaves a spare keyword behind; it still draws
        // a serial number.
        defs.currentKeyword = defs.newKeyword();
        defs.currentKeyword->lineNumber = line;
        defs.optionNames.clear();
        defs.keywordArgCount = 0;
    }
    if (directive != OPTION && !endOfInput) {
        defs.mode = directive;
        return true;
    }
    closeOption(defs);
    defs.currentOption = defs.newOption();
    defs.currentOption->lineNumber = line;
    defs.optionArgCount = 0;
    defs.mode = directive;
    return true;
}

}  // namespace quillet
