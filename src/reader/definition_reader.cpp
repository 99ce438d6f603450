#include "reader/definition_reader.h"

#include <utility>

namespace quillet {

namespace {

constexpr std::size_t field(TextField text) { return static_cast<std::size_t>(text); }

bool is(const DirectiveSpec* spec, Directive directive) { return spec != nullptr && spec->directive == directive; }

}  // namespace

DefinitionReader::DefinitionReader(DefinitionSet& definitions, Reporter& report, std::size_t expectedBytes)
    : definitions_(definitions), report_(report) {
    // An ID with its directive and the rest of its record takes eighty bytes
    // or more in any real definition; a denser one grows the registry once.
    idNames_.reserve(expectedBytes / 80);
    nqtoken_new(&tokens_, nullptr, nullptr, nullptr, nullptr, 0, 0);
    nqtoken_new(&limitWords_, nullptr, nullptr, nullptr, nullptr, 0, 0);
}

DefinitionReader::~DefinitionReader() {
    nqtoken_delete(tokens_);
    nqtoken_delete(limitWords_);
}

void DefinitionReader::keepFirstDefinitions() {
    keywordNames_.keepPlaces();
    optionNames_.keepPlaces();
    idNames_.keepPlaces();
}

std::optional<Position> DefinitionReader::firstDefinition(WordRole role, std::string_view name) const {
    switch (role) {
    case WordRole::KeywordName: return keywordNames_.placeOf(name);
    case WordRole::OptionName: return optionNames_.placeOf(name);
    default: return idNames_.placeOf(name);
    }
}

bool DefinitionReader::read(LineReader& lines, int firstLine) {
    int lineNumber = firstLine - 1;
    bool clean = true;
    if (!readLines(lines, lineNumber, clean)) return false;
    if (finish(lineNumber)) return clean;
    const DirectiveSpec* readAs = nullptr;
    if (observer_ == nullptr || !observer_->readsOn(refusal_, nullptr, lineNumber, readAs)) return false;
    // Closes the last keyword and option, for the observer's checks.
    recover();
    finish(lineNumber);
    return false;
}

bool DefinitionReader::readLines(LineReader& lines, int& lineNumber, bool& clean) {
    Line line{};
    while (lines.next(line)) {
        ++lineNumber;
        if (observer_ != nullptr) observer_->lineStarts(line, lineNumber);
        for (bool read = readLine(line, lineNumber); !read; read = readRestOfLine()) {
            const DirectiveSpec* readAs = nullptr;
            if (observer_ == nullptr || !observer_->readsOn(refusal_, &line, lineNumber, readAs)) return false;
            clean = false;
            recover(readAs);
        }
        if (observer_ != nullptr) observer_->lineEnds();
    }
    return true;
}

bool DefinitionReader::readLine(const Line& line, int lineNumber) {
    report_.setPosition({lineNumber, 0});
    lineNumber_ = lineNumber;
    word_ = 0;
    // Without both lists (out of memory at the start) no line can be read.
    if (tokens_ == nullptr || limitWords_ == nullptr || nqtoken_refill(tokens_, line.text, " \t\n", "\"", "#") != 0) {
        words_ = 0;
        raise(report_, DiagnosticId::CannotTokenize, lineNumber);
        return refuse(Refusal::Line);
    }
    words_ = nqtoken_num(tokens_);
    return readWords();
}

bool DefinitionReader::readRestOfLine() { return readWords(); }

bool DefinitionReader::readWords() {
    int index = word_;
    // After recover(), the refused word may be taken for a directive.
    if (readAs_ != nullptr && !handleWord(index++, lineNumber_, std::exchange(readAs_, nullptr))) {
        word_ = index - 1;
        return false;
    }
    for (; index < words_; ++index) {
        if (!handleWord(index, lineNumber_, nullptr)) {
            word_ = index;
            return false;
        }
    }
    return true;
}

bool DefinitionReader::handleWord(int index, int lineNumber, const DirectiveSpec* readAs) {
    // The tokenizer knows each word's length; the hot paths take it from there.
    const std::string_view word(nqtoken_get_token(tokens_, index),
                                static_cast<std::size_t>(nqtoken_get_length(tokens_, index)));
    report_.setPosition({lineNumber, nqtoken_get_offset(tokens_, index) + 1});
    const DirectiveSpec* spec = readAs != nullptr ? readAs : findDirective(word);
    if (observer_ != nullptr) showWord(word, spec);
    if (spec != nullptr) {
        raise(report_, DiagnosticId::ChangingMode, word.data(), static_cast<int>(spec->directive));
        if (enter(spec, lineNumber)) return true;
        return fail(DiagnosticId::ErrorWithDefinitionOnLine, lineNumber);
    }
    if (handleArgument(word, index)) return true;
    refusal_ = Refusal::Word;
    raise(report_, DiagnosticId::ErrorProcessingCommand, lineNumber);
    if (keyword_ != nullptr) raise(report_, DiagnosticId::CurrentKeyword, keyword_->name.data());
    if (option_ != nullptr) raise(report_, DiagnosticId::CurrentOption, option_->name.data());
    return false;
}

bool DefinitionReader::finish(int lastLine) {
    report_.setPosition({lastLine, 0});
    if (!enter(nullptr, lastLine)) return fail(DiagnosticId::ErrorWithDefinition);
    raise(report_, DiagnosticId::KeywordsFound, static_cast<int>(definitions_.keywords.size()));
    return true;
}

// A refusal text of the directive table.
bool DefinitionReader::failWith(const char* refusal, DiagnosticId id) { return fail(id, refusal); }

bool DefinitionReader::meets(Needs needs) const {
    switch (needs) {
    case Needs::Nothing: return true;
    case Needs::Keyword: return keyword_ != nullptr;
    case Needs::KeywordAndOption: return keyword_ != nullptr && option_ != nullptr;
    }
    return false;
}

// Only the directive right after KEYWORD: or OPTION: notices that it was
// left incomplete; OPT_READONLY: takes effect as it is left.
bool DefinitionReader::checkPreviousDirective() {
    if (keyword_ != nullptr && is(mode_, Directive::KEYWORD) && !keyword_->isComplete) {
        raise(report_, DiagnosticId::KeywordIncomplete, keyword_->lineNumber);
        return fail(DiagnosticId::KeywordSyntax);
    }
    if (mode_ != nullptr && mode_->checked == CheckedWhen::OnLeaving) {
        if (!meets(mode_->needs)) return failWith(mode_->refusal);
        option_->*mode_->optionFlag = true;
    }
    if (option_ != nullptr && is(mode_, Directive::OPTION) && !option_->isComplete) {
        raise(report_, DiagnosticId::OptionIncomplete, option_->lineNumber);
        return fail(DiagnosticId::OptionSyntax);
    }
    return true;
}

// Flag directives are checked against the records in force and applied at once.
bool DefinitionReader::applyOnArrival(const DirectiveSpec& spec) {
    if (spec.checked != CheckedWhen::OnArrival) return true;
    if (!meets(spec.needs)) return failWith(spec.refusal);
    if (spec.keywordPrerequisite != nullptr && !(keyword_->*spec.keywordPrerequisite))
        return failWith(spec.prerequisiteRefusal);
    if (spec.optionPrerequisite != nullptr && !(option_->*spec.optionPrerequisite))
        return failWith(spec.prerequisiteRefusal);
    bool& usedBefore = usedOnce_[rowIndex(spec)];
    if (spec.secondUseRefusal != nullptr) {
        if (usedBefore) return failWith(spec.secondUseRefusal, DiagnosticId::SecondUse);
        usedBefore = true;
    }
    if (spec.keywordFlag != nullptr) keyword_->*spec.keywordFlag = spec.flagValue;
    if (spec.optionFlag != nullptr) option_->*spec.optionFlag = spec.flagValue;
    return true;
}

// A lookup entry left with one or two of its three words is dropped without
// a message; OPT_LOOKUP: must have had its one table name.
bool DefinitionReader::checkLeaving() {
    if (is(mode_, Directive::OPT_LOOKUP) && arguments_ != 1) {
        raise(report_, DiagnosticId::OptLookupIncomplete);
        return fail(DiagnosticId::OptLookupSyntax);
    }
    return true;
}

// An option opened before any keyword can never be completed, so it has no
// keyword to join.
void DefinitionReader::closeOption() {
    if (option_ != nullptr && keyword_ != nullptr) {
        option_->description = definitions_.keep(openTexts_[field(TextField::OptionDescription)]);
        keyword_->options.push_back(option_);
    }
    openTexts_[field(TextField::OptionDescription)].clear();
}

void DefinitionReader::closeKeyword() {
    closeOption();
    option_ = nullptr;
    keyword_->description = definitions_.keep(openTexts_[field(TextField::KeywordDescription)]);
    keyword_->summary = definitions_.keep(openTexts_[field(TextField::KeywordSummary)]);
    keyword_->operandDescription = definitions_.keep(openTexts_[field(TextField::OperandDescription)]);
    keyword_->operandSynopsis = definitions_.keep(openTexts_[field(TextField::OperandSynopsis)]);
    for (std::string& text : openTexts_) text.clear();
    definitions_.keywords.push_back(keyword_);
}

// `next` is null for the check at end of input, which closes the last
// keyword and option and leaves a spare of each behind (they still draw
// serial numbers).
bool DefinitionReader::enter(const DirectiveSpec* next, int line) {
    if (!checkPreviousDirective()) return refuse(Refusal::DirectiveInForce);
    const bool skipped = next != nullptr && setAside(next->needs);
    if (next != nullptr && !skipped && !arrived_ && !applyOnArrival(*next)) {
        refusedDirective_ = next;
        return refuse(Refusal::Directive);
    }
    if (!checkLeaving()) {
        arrived_ = true;
        return refuse(Refusal::Leaving);
    }
    arrived_ = false;

    const bool endOfInput = next == nullptr;
    mode_ = skipped ? nullptr : next;
    arguments_ = 0;
    lookupTable_ = nullptr;
    if (skipped) return true;
    if (endOfInput || next->directive == Directive::KEYWORD) {
        if (keyword_ != nullptr) closeKeyword();
        keyword_ = definitions_.newKeyword();
        keyword_->lineNumber = line;
        optionNames_.clear();
        setAside_ = Needs::Nothing;
    }
    if (endOfInput || next->directive == Directive::OPTION) {
        closeOption();
        option_ = definitions_.newOption();
        option_->lineNumber = line;
        if (setAside_ == Needs::KeywordAndOption) setAside_ = Needs::Nothing;
    }
    return true;
}

bool DefinitionReader::refuse(Refusal refusal) {
    refusal_ = refusal;
    return false;
}

// Whether a directive needing these records is to be skipped, after a
// recovery set them aside.
bool DefinitionReader::setAside(Needs needs) const {
    if (setAside_ == Needs::Nothing || needs == Needs::Nothing) return false;
    return needs == Needs::KeywordAndOption || setAside_ == Needs::Keyword;
}

// After a refusal for want of the records `needs` names: the one missing.
void DefinitionReader::setAsideMissing(Needs needs) {
    if (meets(needs)) return;
    setAside_ = keyword_ == nullptr ? Needs::Keyword : Needs::KeywordAndOption;
}

// Kept apart from handleWord, which the tool runs for every word without an
// observer.
void DefinitionReader::showWord(std::string_view word, const DirectiveSpec* spec) {
    observer_->word({word, report_.position(), spec, mode_, spec == nullptr ? nextRole() : WordRole::Unused});
}

WordRole DefinitionReader::nextRole() const {
    if (mode_ == nullptr) return WordRole::Unused;
    switch (mode_->arguments) {
    case Arguments::Keyword: return arguments_ == 0 ? WordRole::KeywordName
                                  : arguments_ == 1 ? WordRole::KeywordId
                                                    : WordRole::Extra;
    case Arguments::Option: {
        constexpr std::array<WordRole, 4> roles{WordRole::OptionName, WordRole::OptionId, WordRole::OptionType,
                                                WordRole::OptionDefault};
        return arguments_ < 4 ? roles[static_cast<std::size_t>(arguments_)] : WordRole::Extra;
    }
    case Arguments::Text: return WordRole::Text;
    case Arguments::ModelName: return arguments_ == 0 ? WordRole::ModelNameCount : WordRole::Extra;
    case Arguments::OptLookup: return arguments_ == 0 ? WordRole::TableReference : WordRole::Extra;
    case Arguments::Limit: return arguments_ == 0 ? WordRole::Limit : WordRole::Extra;
    case Arguments::Lookup:
        if (lookupTable_ == nullptr) return WordRole::TableName;
        return arguments_ == 0 ? WordRole::EntryId : arguments_ == 1 ? WordRole::EntryName : WordRole::EntryValue;
    case Arguments::Ignored: return WordRole::Unused;
    }
    return WordRole::Unused;
}

void DefinitionReader::recover(const DirectiveSpec* readAs) {
    switch (refusal_) {
    case Refusal::Line: break;
    case Refusal::Word:
        if (readAs == nullptr && is(mode_, Directive::LOOKUP) && lookupTable_ != nullptr) {
            // A refused entry ID (kept before it was refused) still holds
            // its place in the triple; a refused value drops its entry.
            if (arguments_ != 1) arguments_ = 0;
            ++word_;
            return;
        }
        if (is(mode_, Directive::OPTION) && !option_->type) setAside_ = Needs::KeywordAndOption;
        setAsideMissing(mode_->needs);
        if (readAs == nullptr) ++word_;
        readAs_ = readAs;
        break;
    case Refusal::Directive:
        setAsideMissing(refusedDirective_->needs);
        ++word_;
        break;
    case Refusal::DirectiveInForce:
        if (is(mode_, Directive::OPTION) && !option_->type) setAside_ = Needs::KeywordAndOption;
        if (mode_ != nullptr && mode_->checked == CheckedWhen::OnLeaving) setAsideMissing(mode_->needs);
        break;
    case Refusal::Leaving: break;
    }
    mode_ = nullptr;
    arguments_ = 0;
    lookupTable_ = nullptr;
}

}  // namespace quillet
