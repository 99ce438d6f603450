#pragma once

#include <array>
#include <memory>
#include <optional>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "lint/diagnostic.h"
#include "model/definition_set.h"
#include "reader/definition_reader.h"
#include "reader/line_reader.h"
#include "reader/read_observer.h"

namespace quillet::lint {

// The keyword names and the IDs of a file, where each was first given.
struct TakenNames {
    TextRegistry keywordNames;
    TextRegistry ids;
};

// Reads one definition with the tool's own reader and collects every error
// the tool would raise there, recovering after each, and the warnings for
// what the tool lets through. Errors come in reading order, each at the word
// the tool was reading when it refused; the first is the tool's own.
class DefinitionLinter final : private ReadObserver {
public:
    // Errors after the first `maxErrors` are counted, not kept.
    explicit DefinitionLinter(std::size_t maxErrors);

    void read(LineReader& lines);
    // Leaves the descriptions out of the model read (see DefinitionReader).
    void leaveOutDescriptions() { keepsDescriptions_ = false; }
    // Reads one part of a file again, its lines from `firstLine` on: the
    // part sees the names `earlier` registered on the lines before it, and
    // the lookup tables of `tables` defined there (their names are among
    // those IDs), as a reading of the whole file would. With
    // `toEnd` the part ends the file; otherwise the input goes on after it.
    // The checks of the whole file (the tables left unused, the count of
    // carriage returns) are left to the whole file's reading.
    void readPart(LineReader& lines, const TakenNames& earlier, const DefinitionSet& tables, int firstLine,
                  bool toEnd);
    // The names a reading took, once it is done: a part of the file read
    // again later looks behind at them.
    TakenNames takeNames() { return {reader_->takeKeywordNames(), reader_->takeIds()}; }
    // What a part changes for the rest of its file: the names it takes, the
    // tables it uses, the tables it names before they are defined.
    const DefinitionReader& reader() const { return *reader_; }
    const std::unordered_set<std::string_view>& usedTables() const { return usedTables_; }
    const std::vector<std::pair<std::size_t, std::string>>& tablesNamedEarly() const { return unknownTables_; }
    // Shows every word the reader sees to `observer` too (the language
    // server indexes them), after the linter has seen it.
    void forward(ReadObserver* observer) { forward_ = observer; }

    // Once its names are taken: lets the reader and the keyword and option
    // records go, keeping the lookup tables and the texts the names view.
    void forgetKeywords() {
        reader_.reset();
        open_ = {};
        definitions_.forgetKeywords();
    }

    const DefinitionSet& definitions() const { return definitions_; }
    // Every diagnostic, in order of position; notes follow their diagnostic.
    std::vector<Diagnostic> takeDiagnostics();
    std::size_t errorsNotKept() const { return errorsNotKept_; }
    Position firstErrorNotKept() const { return firstErrorNotKept_; }

private:
    struct PendingMessage {
        Channel channel;
        Position position;
        std::string text;
        int identity;
    };
    // What the checks of an option need once it is closed.
    struct OpenOption {
        const OptionDef* option = nullptr;
        Position defaultAt;
        std::size_t defaultLength = 0;  // as written, for a fix
        Position minimumAt;
        Position maximumAt;
        bool lookupRefused = false;  // its OPT_LOOKUP: was an error, which explains a missing default
        // Where OPT_MINIMUM:, OPT_MAXIMUM: and OPT_LOOKUP: were first given, for
        // the note at a second one that replaces it.
        std::array<Position, 3> settingAt{};
    };

    void word(const WordEvent& event) override;
    void lineStarts(const Line& line, int number) override;
    void lineEnds() override;
    bool readsOn(Refusal refusal, const Line* line, int number, const DirectiveSpec*& readAs) override;
    void settle();
    void accepted(const WordEvent& event);
    void refused(Refusal refusal, const Line* line, int number);
    void notesForRefusedWord(Diagnostic& error, Refusal refusal, bool rangeCheck);
    void suggest(Diagnostic& error);
    std::optional<std::string_view> meantEntryId(std::string_view word) const;
    Fix fixAt(Position position, std::string_view replacement) const;
    void checkWord(const WordEvent& event);
    void checkQuotes(const WordEvent& event);
    void checkReplaced(const WordEvent& event);
    void checkLineEnd(const Line& line, int number);
    void followOption();
    void closeOption();
    void checkLookupTables();
    void startReading();
    void endReading(const LineReader& lines);
    bool limitValue(const OptionDef& option, std::string_view text, double& value);

    void add(Diagnostic diagnostic);
    void warn(RuleId rule, Position position, std::string message, std::vector<Note> notes = {});
    Position definedAt(std::string_view id) const;

    DefinitionSet definitions_;
    Reporter report_;
    // Kept after reading: a part read again later looks up the names the
    // lines before it took.
    std::unique_ptr<DefinitionReader> reader_;
    ReadObserver* forward_ = nullptr;
    std::size_t maxErrors_;
    std::size_t errors_ = 0;
    std::size_t errorsNotKept_ = 0;
    Position firstErrorNotKept_;
    std::vector<Diagnostic> diagnostics_;

    std::vector<PendingMessage> messages_;  // of the word being read
    WordEvent pending_{};                   // the word being read, until it is settled
    bool hasPending_ = false;
    Position inForceAt_;  // where the directive in force was given
    std::string_view line_;  // being read, as written
    bool lineQuoted_ = false;  // whether it has a double quote anywhere
    int lastLine_ = 0;

    // Where each name was first given, for the note at a duplicate.
    std::array<Position, kDirectiveCount> onceGivenAt_{};  // by row: KEY_IS_DELETE: and KEY_IS_RENAME:

    bool keepsDescriptions_ = true;
    OpenOption open_;
    std::unordered_set<std::string_view> usedTables_;
    // Errors naming a table not defined yet: diagnostic index and the name.
    std::vector<std::pair<std::size_t, std::string>> unknownTables_;
    std::size_t carriageReturns_ = 0;
    std::size_t firstCarriageReturn_ = 0;  // index of its warning
};

}  // namespace quillet::lint
