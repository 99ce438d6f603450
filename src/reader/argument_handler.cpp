// How the reader takes each word that is not a directive: by the directive in
// force, counting its arguments.
#include <string>

#include "reader/definition_reader.h"
#include "reader/value_parser.h"

namespace quillet {

// Reports a name that is already registered; the registered text is the word
// itself, as the registries match exactly. Registration and the uniqueness
// test are one insertion, and a refused name is never added.
bool DefinitionReader::conflict(DiagnosticId first, DiagnosticId second, std::string_view word) {
    raise(report_, first, word.data());
    return fail(second, word.data());
}

bool DefinitionReader::handleArgument(std::string_view word, int index) {
    // Words before the first directive belong to none and are accepted.
    if (mode_ == nullptr) return true;
    if (mode_->checked == CheckedWhen::OnEachArgument && !meets(mode_->needs)) return failWith(mode_->refusal);
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

bool DefinitionReader::keywordArgument(std::string_view word) {
    ++arguments_;
    if (arguments_ > 2) {
        raise(report_, DiagnosticId::KeywordTooManyArguments);
        return fail(DiagnosticId::ExtraText, word.data());
    }
    const Text text = definitions_.keep(word);
    if (arguments_ == 1) {
        if (!keywordNames_.insert(text, report_.position()))
            return conflict(DiagnosticId::KeywordNameTaken, DiagnosticId::KeywordNameConflict, word);
        keyword_->name = text;
        raise(report_, DiagnosticId::CreatingKeyword, word.data());
        return true;
    }
    if (!idNames_.insert(text, report_.position())) return conflict(DiagnosticId::KeywordIdTaken, DiagnosticId::KeywordIdConflict, word);
    keyword_->id = text;
    keyword_->isComplete = true;
    return true;
}

bool DefinitionReader::optionArgument(std::string_view word, int index) {
    OptionDef& option = *option_;
    switch (++arguments_) {
    case 1: {
        // Exact equality, whatever the message says about three letters.
        const Text name = definitions_.keep(word);
        if (!optionNames_.insert(name, report_.position()))
            return conflict(DiagnosticId::OptionNameTaken, DiagnosticId::NameConflict, word);
        option.name = name;
        raise(report_, DiagnosticId::CreatingOption, word.data());
        return true;
    }
    case 2: {
        const Text id = definitions_.keep(word);
        if (!idNames_.insert(id, report_.position())) return conflict(DiagnosticId::OptionIdTaken, DiagnosticId::OptionIdConflict, word);
        option.id = id;
        return true;
    }
    case 3:
        option.type = findOptionType(word);
        if (option.type) return true;
        return fail(DiagnosticId::UnknownType, word.data());
    case 4:
        if (!parseDefaultValue(definitions_, report_, option, tokens_, index))
            return fail(DiagnosticId::BadDefaultValue, option.lineNumber);
        option.isComplete = true;
        return true;
    default:
        raise(report_, DiagnosticId::OptionTooManyArguments);
        return fail(DiagnosticId::ExtraText, word.data());
    }
}

// Each word is appended with one blank after it. Only a keyword's
// description skips an empty word (a quoted ""); authors rely on both.
bool DefinitionReader::textArgument(std::string_view word) {
    const TextField field = mode_->text;
    if (word.empty() && field == TextField::KeywordDescription) return true;
    if (!keepsDescriptions_ && field != TextField::KeywordSummary) return true;
    openTexts_[static_cast<std::size_t>(field)].append(word).push_back(' ');
    return true;
}

bool DefinitionReader::modelNameArgument(std::string_view word) {
    if (keyword_ == nullptr) return fail(DiagnosticId::ModelNameMisplaced);
    if (++arguments_ != 1) return fail(DiagnosticId::ModelNameExtra, word.data());
    keyword_->numTokensInModelName = definitions_.keep(word);
    return true;
}

bool DefinitionReader::optLookupArgument(std::string_view word) {
    OptionDef& option = *option_;
    if (++arguments_ != 1) return fail(DiagnosticId::OptLookupExtra, word.data());
    if (option.type != OptionType::NQ_INT_TYPE) {
        raise(report_, DiagnosticId::LookupOnNonInteger);
        return fail(DiagnosticId::OptionNotInteger, option.lineNumber);
    }
    const LookupTableDef* table = definitions_.findLookupTable(word);
    if (table == nullptr) {
        raise(report_, DiagnosticId::UnknownLookupTable, word.data());
        return fail(DiagnosticId::UnknownLookupTableHint);
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

bool DefinitionReader::limitArgument(std::string_view word) {
    const bool minimum = mode_->directive == Directive::OPT_MINIMUM;
    OptionDef& option = *option_;
    if (option.type != OptionType::NQ_INT_TYPE && option.type != OptionType::NQ_DOUBLE_TYPE)
        return fail(minimum ? DiagnosticId::MinimumWrongType : DiagnosticId::MaximumWrongType);
    if (++arguments_ != 1) return fail(minimum ? DiagnosticId::MinimumExtra : DiagnosticId::MaximumExtra, word.data());
    if (setLimit(definitions_, report_, option, word, minimum ? Limit::Minimum : Limit::Maximum, *limitWords_)) return true;
    return fail(minimum ? DiagnosticId::MinimumInvalid : DiagnosticId::MaximumInvalid, word.data());
}

// The table name, then triples of entry ID, entry name and value. One
// LOOKUP: defines one table.
bool DefinitionReader::lookupArgument(std::string_view word) {
    ++arguments_;
    if (arguments_ == 1 && lookupTable_ == nullptr) {
        const Text name = definitions_.keep(word);
        if (!idNames_.insert(name, report_.position())) return conflict(DiagnosticId::LookupNameTaken, DiagnosticId::NameConflict, word);
        lookupTable_ = definitions_.newLookupTable(name);
        arguments_ = 0;
        return true;
    }
    switch (arguments_) {
    case 1:
        pendingEntryId_ = definitions_.keep(word);
        if (!idNames_.insert(pendingEntryId_, report_.position()))
            return conflict(DiagnosticId::LookupIdTaken, DiagnosticId::LookupIdConflict, word);
        return true;
    case 2:
        pendingEntryName_ = definitions_.keep(word);
        return true;
    default: {
        std::int64_t parsed = 0;
        if (!parseNumber(word, parsed)) return fail(DiagnosticId::LookupValueBad, word.data());
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
