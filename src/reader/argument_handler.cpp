// How the reader takes each word that is not a directive: by the directive in
// force, counting its arguments.
#include <string>

#include "reader/definition_reader.h"
#include "reader/value_parser.h"

namespace quillet {

// Reports a name that is already registered; the registered text is the word
// itself, as the registries match exactly. Registration and the uniqueness
// test are one insertion, and a refused name is never added.
bool DefinitionReader::conflict(const char* first, const char* second, const char* word) {
    report_.error(first, word);
    report_.error(second, word);
    return false;
}

bool DefinitionReader::handleArgument(const char* word, int index) {
    // Words before the first directive belong to none and are accepted.
    if (mode_ == nullptr) return true;
    if (mode_->checked == CheckedWhen::OnEachArgument && !meets(mode_->needs)) return fail(mode_->refusal);
    switch (mode_->arguments) {
    case Arguments::Keyword: return keywordArgument(word);
    case Arguments::Option: return optionArgument(word, index);
    case Arguments::Text: return textArgument(word);
    case Arguments::ModelName: return modelNameArgument(word);
    case Arguments::OptLookup: return optLookupArgument(word);
    case Arguments::Limit: return limitArgument(word);
    case Arguments::Lookup: return lookupArgument(word);
    case Arguments::Ignored: return true;
    }
    return true;
}

bool DefinitionReader::keywordArgument(const char* word) {
    ++arguments_;
    if (arguments_ > 2) {
        fail("Too many args for the KEYWORD: command \n");
        report_.error("  Extra text = %s\n", word);
        return false;
    }
    const Text text = definitions_.keep(word);
    if (arguments_ == 1) {
        if (!keywordNames_.insert(text))
            return conflict("Keyword name '%s' is not unique\n", "Conflict found with : '%s'\n", word);
        keyword_->name = text;
        report_.progress("Creating keyword: '%s'\n", word);
        return true;
    }
    if (!idNames_.insert(text)) return conflict("ID name '%s' is not unique:\n", "Conflict with: '%s' \n", word);
    keyword_->id = text;
    keyword_->isComplete = true;
    return true;
}

bool DefinitionReader::optionArgument(const char* word, int index) {
    OptionDef& option = *option_;
    switch (++arguments_) {
    case 1: {
        // Exact equality, whatever the message says about three letters.
        const Text name = definitions_.keep(word);
        if (!optionNames_.insert(name))
            return conflict("Option name '%s' is not unique to three letters\n", "Conflict with: '%s' \n", word);
        option.name = name;
        report_.progress("  Creating option: '%s'\n", word);
        return true;
    }
    case 2: {
        const Text id = definitions_.keep(word);
        if (!idNames_.insert(id)) return conflict("ID name '%s' is not unique:\n", "Conflict is with: '%s' \n", word);
        option.id = id;
        return true;
    }
    case 3:
        option.type = findOptionType(word);
        if (option.type) return true;
        report_.error("Unknown type for current option: %s\n", word);
        return false;
    case 4:
        if (!parseDefaultValue(definitions_, report_, option, tokens_, index)) {
            report_.error("Bad default value for OPTION: defined on line %d\n", option.lineNumber);
            return false;
        }
        option.isComplete = true;
        return true;
    default:
        fail("Too many args for the OPTION: command \n");
        report_.error("  Extra text = %s\n", word);
        return false;
    }
}

// Each word is appended with one blank after it. Only a keyword's
// description skips an empty word (a quoted ""); authors rely on both.
bool DefinitionReader::textArgument(std::string_view word) {
    const TextField field = mode_->text;
    if (word.empty() && field == TextField::KeywordDescription) return true;
    openTexts_[static_cast<std::size_t>(field)].append(word).push_back(' ');
    return true;
}

bool DefinitionReader::modelNameArgument(const char* word) {
    if (keyword_ == nullptr)
        return fail("The setNumTokensInModelName: command must be specified after   a KEYWORD: command\n");
    if (++arguments_ != 1) {
        report_.error("KEY_OPERANDS_ARE_MODEL_NAME: has only a single argument: '%s' is unknown\n", word);
        return false;
    }
    keyword_->numTokensInModelName = definitions_.keep(word);
    return true;
}

bool DefinitionReader::optLookupArgument(const char* word) {
    OptionDef& option = *option_;
    if (++arguments_ != 1) {
        report_.error("OPT_LOOKUP requires only a single argument: '%s' is an error\n", word);
        return false;
    }
    if (option.type != OptionType::NQ_INT_TYPE) {
        fail("Cannot add lookup table to non-integer type\n");
        report_.error("The option declared on line %d is not an integer\n", option.lineNumber);
        return false;
    }
    const LookupTableDef* table = definitions_.findLookupTable(word);
    if (table == nullptr) {
        report_.error("'%s' does not refer to an existing lookup table\n", word);
        report_.error("%s\n%s\n", "OPT_LOOKUP: requires the name of an existing lookup table",
                      " which has been defined with the LOOKUP: command");
        return false;
    }
    option.hasLookupTable = true;
    option.lookupTableName = table->name;
    // The table's range becomes the option's limits and a symbolic default is
    // resolved, in that order; a failed range check is reported but does not
    // refuse the table.
    setLimit(definitions_, report_, option, std::to_string(table->minValue), Limit::Minimum, *limitWords_);
    setLimit(definitions_, report_, option, std::to_string(table->maxValue), Limit::Maximum, *limitWords_);
    resolveSymbolicDefault(definitions_, option);
    return true;
}

bool DefinitionReader::limitArgument(const char* word) {
    const bool minimum = mode_->directive == Directive::OPT_MINIMUM;
    OptionDef& option = *option_;
    if (option.type != OptionType::NQ_INT_TYPE && option.type != OptionType::NQ_DOUBLE_TYPE)
        return fail(minimum ? "The OPT_MINIMUM: command is only for integer and double types\n"
                            : "The OPT_MAXIMUM: command is only for integer and double types\n");
    if (++arguments_ != 1) {
        report_.error(minimum ? "OPT_MINIMUM: requires only a single argument: '%s' is unknown\n"
                              : "OPT_MAXIMUM: requires only a single argument: '%s' is unknown\n",
                      word);
        return false;
    }
    if (setLimit(definitions_, report_, option, word, minimum ? Limit::Minimum : Limit::Maximum, *limitWords_)) return true;
    report_.error(minimum ? "OPT_MINIMUM: invalid value: '%s' \n" : "OPT_MAXIMUM: invalid value: '%s' \n", word);
    return false;
}

// The table name, then triples of entry ID, entry name and value. One
// LOOKUP: defines one table.
bool DefinitionReader::lookupArgument(const char* word) {
    ++arguments_;
    if (arguments_ == 1 && lookupTable_ == nullptr) {
        const Text name = definitions_.keep(word);
        if (!idNames_.insert(name)) return conflict("Lookup name '%s' is not unique:\n", "Conflict with: '%s' \n", word);
        lookupTable_ = definitions_.newLookupTable(name);
        arguments_ = 0;
        return true;
    }
    switch (arguments_) {
    case 1:
        pendingEntryId_ = definitions_.keep(word);
        if (!idNames_.insert(pendingEntryId_))
            return conflict("Lookup id '%s' is not unique:\n", "Conflict with:'%s'\n", word);
        return true;
    case 2:
        pendingEntryName_ = definitions_.keep(word);
        return true;
    default: {
        std::int64_t parsed = 0;
        if (!parseNumber(word, parsed)) {
            report_.error("Value could not be parsed: '%s'\n", word);
            return false;
        }
        const std::int32_t value = low32(parsed);
        definitions_.addLookupEntry(*lookupTable_, pendingEntryId_, pendingEntryName_, value);
        if (value < lookupTable_->minValue) lookupTable_->minValue = value;
        if (value > lookupTable_->maxValue) lookupTable_->maxValue = value;
        arguments_ = 0;
        return true;
    }
    }
}

}  // namespace quillet
