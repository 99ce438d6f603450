#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "format/line_place.h"

namespace quillet::format {

// A line of the definition that holds words, split for the layout.
struct WordLine {
    int number;
    std::string_view source;                     // the whole line as written
    const std::vector<std::string_view>& words;  // each as written, quotes included
    std::string_view comment;                    // from its `#`, without trailing blanks; empty for none
};

// Writes the lines of a definition in the layout, in their order. Own-line
// comments, blank lines and the entries of a lookup table are held until the
// next line is known: a comment takes the indentation of the line after it,
// the blank line before a KEYWORD: or LOOKUP: goes above the comments
// directly above it, and a table's columns depend on all its entries.
class Layout {
public:
    Layout(std::string& out, std::vector<int>* origins) : out_(out), origins_(origins) {}

    void blank(int number);
    void comment(int number, std::string_view source, std::string_view text);
    // `table` tells the tables apart for a lookup entry.
    void words(const WordLine& line, const LinePlace& place, const void* table);
    void finish();

private:
    enum class Kind : std::uint8_t { Blank, Comment, Entry };
    struct Held {
        Kind kind;
        int number = 0;
        int indent = 0;
        std::string_view source = {};
        std::string_view comment = {};
        std::size_t firstWord = 0;  // in words_
        std::size_t wordCount = 0;
    };

    void flush(int nextIndent, bool nextOpensBlock);
    bool alignEntries();
    void writeEntry(const Held& entry, bool aligned);
    void separate(int origin);
    std::size_t beginLine(int number, int indent);
    void appendWords(const std::vector<std::string_view>& words);
    void appendComment(std::string_view comment);
    void endLine(std::size_t start, std::string_view source);

    std::string& out_;
    std::vector<int>* origins_;
    std::vector<Held> held_;
    std::vector<std::string_view> words_;  // of the held entries
    const void* table_ = nullptr;          // of the held entries
    std::vector<std::size_t> widths_;      // of the held entries' columns
};

}  // namespace quillet::format
