#pragma once

#include <cstdint>
#include <string_view>

#include "model/reporter.h"
#include "language/directive.h"
#include "reader/line_reader.h"

namespace quillet {

// What the last refusal concerned.
enum class Refusal : std::uint8_t {
    Line,              // the line could not be split into words
    Word,              // an argument
    Directive,         // an arriving directive, out of place or repeated
    DirectiveInForce,  // the directive in force, found incomplete or misplaced as the next one arrived
    Leaving,           // likewise, after the arriving directive had been applied
};

// What an argument word is to the directive in force, as the reader counts.
enum class WordRole : std::uint8_t {
    Unused,  // before the first directive, or after a directive that takes none
    KeywordName,
    KeywordId,
    OptionName,
    OptionId,
    OptionType,
    OptionDefault,
    Text,
    ModelNameCount,
    TableReference,  // the table of OPT_LOOKUP:
    Limit,
    TableName,
    EntryId,
    EntryName,
    EntryValue,
    Extra,  // one word more than the directive takes
};

struct WordEvent {
    std::string_view text;
    Position position;
    const DirectiveSpec* directive;  // the word's row when it is a directive word, else null
    const DirectiveSpec* inForce;    // the directive in force before the word
    WordRole role;                   // for an argument
};

// Sees every word before the reader takes it; the linter checks what the
// tool lets through this way, without reading the definition a second time.
class ReadObserver {
public:
    virtual void word(const WordEvent& event) = 0;
    // Around each line that read() reads.
    virtual void lineStarts(const Line& /*line*/, int /*number*/) {}
    virtual void lineEnds() {}
    // After a refusal in read(): whether to recover and read on, as the
    // linter does (the tool stops); `readAs` is what a refused word is to be
    // taken for. `line` is null for the check at end of input.
    virtual bool readsOn(Refusal /*refusal*/, const Line* /*line*/, int /*number*/,
                         const DirectiveSpec*& /*readAs*/) {
        return false;
    }

protected:
    ~ReadObserver() = default;
};

}  // namespace quillet
