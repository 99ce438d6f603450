#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/definition_set.h"
#include "model/reporter.h"
#include "model/text_registry.h"
#include "nqtoken.h"
#include "language/diagnostic.h"
#include "language/directive.h"
#include "reader/line_reader.h"
#include "reader/read_observer.h"
#include "reader/value_parser.h"

namespace quillet {

// Reads a definition into a DefinitionSet, one line at a time. It owns all
// that only reading needs: the directive in force, the records being
// defined, the argument count, the name registries. Every refusal is
// reported through the reporter, positioned at the word that caused it.
//
// The tool stops at the first refusal. The linter instead calls recover()
// and readRestOfLine() and reads on, so that one file shows all its errors.
class DefinitionReader {
public:
    // `expectedBytes`, the definition's size where known, sizes the registries
    // once instead of growing them.
    DefinitionReader(DefinitionSet& definitions, Reporter& report, std::size_t expectedBytes = 0);
    ~DefinitionReader();
    DefinitionReader(const DefinitionReader&) = delete;
    DefinitionReader& operator=(const DefinitionReader&) = delete;

    // Reads every line and then makes the check at end of input; false,
    // after reporting, at the first refusal, unless the observer reads on
    // (then false once all is read). A line too long for the reader ends the
    // definition there, silently.
    bool read(LineReader& lines) { return read(lines, 1); }
    // The same for a file's lines from `firstLine` on, numbered so.
    bool read(LineReader& lines, int firstLine);
    // Reads every line, numbering them on from `lineNumber`, and no more:
    // the input goes on after them. False at the first refusal unless the
    // observer reads on; `clean` is then false too.
    bool readLines(LineReader& lines, int& lineNumber, bool& clean);
    // Reads every word of the line in turn; false, after reporting, at the
    // first word refused.
    bool readLine(const Line& line, int lineNumber);
    // The check at end of input: closes the last keyword and its last option.
    bool finish(int lastLine);

    // Shows every word to `observer` before reading it.
    void observe(ReadObserver* observer) { observer_ = observer; }
    // After a refusal: abandons the directive in force (its remaining words
    // are ignored up to the next directive) and sets aside a record that the
    // refusal left missing or without a type, so that the directives needing
    // it are skipped silently until the next KEYWORD: or OPTION: replaces it.
    // A lookup table goes on with its next entry instead. A directive refused
    // only because the one in force was incomplete is entered on the retry.
    // `readAs`, for a refused argument: the directive it is to be taken for
    // (the linter's reading of a misspelt directive word).
    void recover(const DirectiveSpec* readAs = nullptr);
    // Goes on with the words of the line after a refusal and recover().
    bool readRestOfLine();

    // For a part of a file read again from `firstLine` on: the keyword names
    // and IDs registered (with places) on the lines before are taken already.
    void readAfter(const TextRegistry& keywordNames, const TextRegistry& ids, int firstLine) {
        keywordNames_.lookBehind(keywordNames, firstLine);
        idNames_.lookBehind(ids, firstLine);
    }
    // The keyword names and the IDs this reader took itself, where each was
    // first given.
    const TextRegistry& keywordNames() const { return keywordNames_; }
    const TextRegistry& ids() const { return idNames_; }
    // Gives them up, once reading is done.
    TextRegistry takeKeywordNames() { return std::move(keywordNames_); }
    TextRegistry takeIds() { return std::move(idNames_); }
    // Whether every keyword name and ID this reader took and `was` did not
    // is taken nowhere in the file whose names are `keywordNames` and `ids`.
    bool takesOnlyNewNames(const DefinitionReader& was, const TextRegistry& keywordNames,
                           const TextRegistry& ids) const {
        return keywordNames_.addsOnlyTextsNewTo(was.keywordNames_, keywordNames) &&
               idNames_.addsOnlyTextsNewTo(was.idNames_, ids);
    }
    // Leaves the descriptions (all texts but the summary) out of the model;
    // they are most of a large definition's bytes, and no check reads them.
    void leaveOutDescriptions() { keepsDescriptions_ = false; }
    // Keeps where each name and ID was first defined, for firstDefinition();
    // the linter asks, the tool does not.
    void keepFirstDefinitions();
    // Where the name a word of that role would define was defined first: a
    // keyword name, an option name of the keyword in force, or an ID (of a
    // keyword, an option, a lookup table or a lookup entry).
    std::optional<Position> firstDefinition(WordRole role, std::string_view name) const;

    // A limit's text read as OPT_MINIMUM: and OPT_MAXIMUM: read it.
    bool readLimit(std::optional<OptionType> type, const char* text, LimitReading& reading) {
        return limitWords_ != nullptr && quillet::readLimit(definitions_, type, text, *limitWords_, reading);
    }
    const DirectiveSpec* directiveInForce() const { return mode_; }
    const OptionDef* option() const { return option_; }
    const LookupTableDef* lookupTable() const { return lookupTable_; }
    // The words of the line last read, with their places in it.
    const nqtoken_list* lineWords() const { return tokens_; }

private:
    bool readWords();
    bool handleWord(int index, int lineNumber, const DirectiveSpec* readAs);
    [[gnu::noinline]] void showWord(std::string_view word, const DirectiveSpec* spec);
    WordRole nextRole() const;
    bool refuse(Refusal refusal);
    bool setAside(Needs needs) const;
    void setAsideMissing(Needs needs);

    // Entering a directive, in the order the steps must run.
    bool enter(const DirectiveSpec* next, int line);
    bool checkPreviousDirective();
    bool applyOnArrival(const DirectiveSpec& spec);
    bool checkLeaving();
    void closeOption();
    void closeKeyword();

    // Each `word` ends in a NUL: a handler that reports it passes its data().
    bool handleArgument(std::string_view word, int index);
    bool meets(Needs needs) const;
    // Raises the message and refuses.
    template <typename... Args>
    bool fail(DiagnosticId id, Args... args) {
        raise(report_, id, args...);
        return false;
    }
    bool failWith(const char* refusal, DiagnosticId id = DiagnosticId::DirectiveRefused);
    bool conflict(DiagnosticId first, DiagnosticId second, std::string_view word);
    bool keywordArgument(std::string_view word);
    bool optionArgument(std::string_view word, int index);
    bool textArgument(std::string_view word);
    bool modelNameArgument(std::string_view word);
    bool optLookupArgument(std::string_view word);
    bool limitArgument(std::string_view word);
    bool lookupArgument(std::string_view word);

    DefinitionSet& definitions_;
    Reporter& report_;
    ReadObserver* observer_ = nullptr;
    nqtoken_list* tokens_ = nullptr;
    nqtoken_list* limitWords_ = nullptr;  // splits limit texts, apart from the line's words
    int lineNumber_ = 0;
    int word_ = 0;   // of the line, the one being read
    int words_ = 0;  // of the line

    // The last refusal, for recover(); the state after it only recovery sets.
    Refusal refusal_ = Refusal::Word;
    const DirectiveSpec* refusedDirective_ = nullptr;  // refused on arrival
    Needs setAside_ = Needs::Nothing;        // records the directives needing them skip silently
    bool arrived_ = false;                   // the directive to retry was applied already
    const DirectiveSpec* readAs_ = nullptr;  // what the next word is to be taken for

    const DirectiveSpec* mode_ = nullptr;  // the directive in force; none before the first
    KeywordDef* keyword_ = nullptr;        // none before the first KEYWORD:
    OptionDef* option_ = nullptr;          // none from each KEYWORD: to the next OPTION:
    LookupTableDef* lookupTable_ = nullptr;  // of the LOOKUP: in force, once it is named
    int arguments_ = 0;                    // words the directive in force has taken
    Text pendingEntryId_;
    Text pendingEntryName_;
    std::array<bool, kDirectiveCount> usedOnce_{};  // by row: applied to a keyword already

    // The texts of the open keyword and option, kept in the model when the
    // record closes, by TextField.
    std::array<std::string, kTextFieldCount> openTexts_;
    bool keepsDescriptions_ = true;

    TextRegistry keywordNames_;
    TextRegistry optionNames_;  // of the current keyword only
    TextRegistry idNames_;      // keyword IDs, option IDs, table names and entry IDs alike
};

}  // namespace quillet
