#include "reader/argument_handler.h"

#include <string>
#include <string_view>

#include "nqerr.h"
#include "reader/directive.h"
#include "reader/value_parser.h"

namespace quillet {

namespace {

// Every token comes from the tokenizer, so its view ends at a NUL and its
// data() can be printed with %s.
bool fail(const RunContext& context, const char* format, std::string_view text) {
    context.report.error(format, text.data());
    return false;
}

bool fail(const RunContext& context, const char* message) {
    context.report.error("%s", message);
    return false;
}

// Reports a name that is already registered; the registered text is the
// token itself, as the registries match exactly. Registration and the
// uniqueness test are one insertion, and a refused name is never added.
bool conflict(const RunContext& context, const char* first, const char* second, std::string_view token) {
    context.report.error(first, token.data());
    return fail(context, second, token);
}

bool keywordArgument(DefinitionSet& defs, const RunContext& context, std::string_view token) {
    KeywordDef& keyword = *defs.currentKeyword;
    ++defs.keywordArgCount;
    if (defs.keywordArgCount > 2) {
        fail(context, "Too many args for the KEYWORD: command \n");
        return fail(context, "  Extra text = %s\n", token);
    }
    if (defs.keywordArgCount == 1) {
        if (!defs.keywordNames.insert(token))
            return conflict(context, "Keyword name '%s' is not unique\n", "Conflict found with : '%s'\n", token);
        keyword.name = token;
        context.report.progress("Creating keyword: '%s'\n", token.data());
        return true;
    }
    if (!defs.idNames.insert(token))
        return conflict(context, "ID name '%s' is not unique:\n", "Conflict with: '%s' \n", token);
    keyword.id = token;
    keyword.isComplete = true;
    return true;
}

bool optionArgument(DefinitionSet& defs, const RunContext& context, const nqtoken_list* tokens, int index,
                    std::string_view token) {
    if (defs.currentKeyword == nullptr) return fail(context, "The OPTION: command must be specified after a KEYWORD:\n");
    OptionDef& option = *defs.currentOption;
    ++defs.optionArgCount;
    switch (defs.optionArgCount) {
    case 1:
        // Exact equality, whatever the message says about three letters.
        if (!defs.optionNames.insert(token))
            return conflict(context, "Option name '%s' is not unique to three letters\n", "Conflict with: '%s' \n",
                            token);
        option.name = token;
        context.report.progress("  Creating option: '%s'\n", token.data());
        return true;
    case 2:
        if (!defs.idNames.insert(token))
            return conflict(context, "ID name '%s' is not unique:\n", "Conflict is with: '%s' \n", token);
        option.id = token;
        return true;
    case 3: {
        auto type = defs.typeNames.find(token);
        if (type == defs.typeNames.end()) return fail(context, "Unknown type for current option: %s\n", token);
        option.type = type->second;
        return true;
    }
    case 4:
        if (!parseDefaultValue(option, context, tokens, index)) {
            context.report.error("Bad default value for OPTION: defined on line %d\n",
                        option.lineNumber);
            return false;
        }
        option.isComplete = true;
        return true;
    default:
        fail(context, "Too many args for the OPTION: command \n");
        return fail(context, "  Extra text = %s\n", token);
    }
}

bool textArgument(DefinitionSet& defs, const RunContext& context, int mode, std::string_view token) {
    KeywordDef* keyword = defs.currentKeyword;
    switch (mode) {
    case OPT_DESCRIPTION:
        if (keyword == nullptr || defs.currentOption == nullptr)
            return fail(context, "The OPT_DESCRIPTION command must be specified after a KEYWORD:"
                                 "    and OPTION: command\n");
        defs.currentOption->appendDescription(token);
        return true;
    case KEY_DESCRIPTION:
        if (keyword == nullptr) return fail(context, "The KEY_DESCRIPTION command must be specified after a KEYWORD:\n");
        keyword->appendDescription(token);
        return true;
    case KEY_SUMMARY:
        if (keyword == nullptr) return fail(context, "The KEY_SUMMARY command must be specified after a KEYWORD:\n");
        keyword->appendSummary(token);
        return true;
    case KEY_OPERAND_DESCRIPTION:
        if (keyword == nullptr)
            return fail(context, "The KEY_OPERAND_DESCRIPTION command must be specified after a KEYWORD:\n");
        keyword->appendOperandDescription(token);
        return true;
    default:
        if (keyword == nullptr)
            return fail(context, "The KEY_OPERAND_SYNOPSIS command must be specified after a KEYWORD:\n");
        keyword->appendOperandSynopsis(token);
        return true;
    }
}

bool modelNameArgument(DefinitionSet& defs, const RunContext& context, std::string_view token) {
    if (defs.currentKeyword == nullptr)
        return fail(context, "The setNumTokensInModelName: command must be specified after   a KEYWORD: command\n");
    ++defs.modelNameArgCount;
    if (defs.modelNameArgCount != 1)
        return fail(context, "KEY_OPERANDS_ARE_MODEL_NAME: has only a single argument: '%s' is unknown\n", token);
    defs.currentKeyword->numTokensInModelName = token;
    return true;
}

bool optLookupArgument(DefinitionSet& defs, const RunContext& context, std::string_view token) {
    if (defs.currentKeyword == nullptr || defs.currentOption == nullptr)
        return fail(context, "The OPT_LOOKUP: command must be specified after a KEYWORD:    and OPTION: command\n");
    OptionDef& option = *defs.currentOption;
    ++defs.optLookupArgCount;
    if (defs.optLookupArgCount != 1)
        return fail(context, "OPT_LOOKUP requires only a single argument: '%s' is an error\n", token);
    if (option.type != OptionType::NQ_INT_TYPE) {
        fail(context, "Cannot add lookup table to non-integer type\n");
        context.report.error("The option declared on line %d is not an integer\n",
                    option.lineNumber);
        return false;
    }
    const LookupTableDef* table = defs.findLookupTable(token);
    if (table == nullptr) {
        fail(context, "'%s' does not refer to an existing lookup table\n", token);
        context.report.error("%s\n%s\n",
                    "OPT_LOOKUP: requires the name of an existing lookup table",
                    " which has been defined with the LOOKUP: command");
        return false;
    }
    option.setLookupTable(token);
    // The table's range becomes the option's limits and a symbolic default is
    // resolved, in that order; a failed range check is reported but does not
    // refuse the table.
    setMinimum(defs, context, option, std::to_string(table->minValue));
    setMaximum(defs, context, option, std::to_string(table->maxValue));
    resolveSymbolicDefault(defs, option);
    return true;
}

bool limitArgument(DefinitionSet& defs, const RunContext& context, int mode, std::string_view token) {
    const bool minimum = mode == OPT_MINIMUM;
    if (defs.currentKeyword == nullptr || defs.currentOption == nullptr)
        return fail(context, minimum ? "The OPT_MINIMUM: command must be specified after a KEYWORD:"
                                       "    and OPTION: command\n"
                                     : "The OPT_MAXIMUM: command must be specified after a KEYWORD:"
                                       "    and OPTION: command\n");
    OptionDef& option = *defs.currentOption;
    if (option.type != OptionType::NQ_INT_TYPE && option.type != OptionType::NQ_DOUBLE_TYPE)
        return fail(context, minimum ? "The OPT_MINIMUM: command is only for integer and double types\n"
                                     : "The OPT_MAXIMUM: command is only for integer and double types\n");
    int& count = minimum ? defs.minimumArgCount : defs.maximumArgCount;
    ++count;
    if (count != 1)
        return fail(context,
                    minimum ? "OPT_MINIMUM: requires only a single argument: '%s' is unknown\n"
                            : "OPT_MAXIMUM: requires only a single argument: '%s' is unknown\n",
                    token);
    const std::string text(token);
    if (minimum ? !setMinimum(defs, context, option, text) : !setMaximum(defs, context, option, text))
        return fail(context, minimum ? "OPT_MINIMUM: invalid value: '%s' \n" : "OPT_MAXIMUM: invalid value: '%s' \n",
                    token);
    return true;
}

bool lookupArgument(DefinitionSet& defs, const RunContext& context, std::string_view token) {
    ++defs.lookupArgCount;
    if (defs.lookupArgCount == 1 && !defs.lookupTableStarted) {
        if (!defs.idNames.insert(token))
            return conflict(context, "Lookup name '%s' is not unique:\n", "Conflict with: '%s' \n", token);
        defs.lookupTableStarted = true;
        defs.lookupArgCount = 0;
        defs.currentLookupTable = defs.newLookupTable(std::string(token));
        defs.lookupTables.emplace(token, defs.currentLookupTable);
        return true;
    }
    switch (defs.lookupArgCount) {
    case 1:
        if (!defs.idNames.insert(token))
            return conflict(context, "Lookup id '%s' is not unique:\n", "Conflict with:'%s'\n", token);
        defs.pendingEntryId = token;
        return true;
    case 2:
        defs.pendingEntryName = token;
        return true;
    default: {
        std::int64_t parsed = 0;
        if (parseNumber(std::string(token), parsed) != 0) return fail(context, "Value could not be parsed: '%s'\n", token);
        LookupTableDef& table = *defs.currentLookupTable;
        const std::int32_t value = low32(parsed);
        defs.addLookupEntry(table, defs.pendingEntryId, defs.pendingEntryName, value);
        if (value < table.minValue) table.minValue = value;
        if (value > table.maxValue) table.maxValue = value;
        defs.lookupArgCount = 0;
        return true;
    }
    }
}

}  // namespace

bool handleArgumentToken(DefinitionSet& defs, const RunContext& context, const nqtoken_list* tokens, int index) {
    const std::string_view token = nqtoken_get_token(tokens, index);
    switch (defs.mode) {
    case KEYWORD:
        return keywordArgument(defs, context, token);
    case OPTION:
        return optionArgument(defs, context, tokens, index, token);
    case KEY_DESCRIPTION:
    case KEY_SUMMARY:
    case KEY_OPERAND_DESCRIPTION:
    case KEY_OPERAND_SYNOPSIS:
    case OPT_DESCRIPTION:
        return textArgument(defs, context, defs.mode, token);
    case KEY_OPERANDS_ARE_MODEL_NAME:
        return modelNameArgument(defs, context, token);
    case OPT_LOOKUP:
        return optLookupArgument(defs, context, token);
    case OPT_MINIMUM:
    case OPT_MAXIMUM:
        return limitArgument(defs, context, defs.mode, token);
    case LOOKUP:
        return lookupArgument(defs, context, token);
    default:
        // Flag directives take no arguments, and words before the first
        // directive belong to none: both are accepted and ignored.
        return true;
    }
}

}  // namespace quillet
