#pragma once

#include <cstddef>
#include <string_view>

namespace quillet::lint {

// A word as it stands in its line, before the reader's tokenizer drops its
// quotes: for fixes that replace it, and for texts that lose quotes.
struct RawWord {
    std::string_view text;  // a carriage return ending the line left out
    bool quoted = false;    // holds a quoted section
};

// The word starting at the 1-based byte `column` of `line`: up to a blank,
// tab or comment character outside a quoted section. `line` is one the
// reader could split into words, so its quotes are closed.
RawWord rawWordAt(std::string_view line, int column);

}  // namespace quillet::lint
