#pragma once

#include <cstdint>
#include <string_view>

#include "model/reporter.h"
#include "reader/directive.h"

namespace quillet {

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

protected:
    ~ReadObserver() = default;
};

}  // namespace quillet
