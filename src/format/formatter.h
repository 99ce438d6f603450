#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillet::format {

// Why a definition cannot be formatted, at its 1-based line and byte column
// (0 where no column applies, as at the end of input).
struct Problem {
    int line = 0;
    int column = 0;
    std::string message;
};

// Lays a definition out in the one layout of the definition language guide:
// indentation, aligned lookup entries, blank lines between keywords and
// tables, no trailing blanks, one final line end. Words keep their bytes and
// every line keeps its words, so quillet reads the result exactly as it reads
// the definition.
//
// Returns false, with the problems in line order and `formatted` left empty,
// for a definition quillet refuses (its first error, where quillet stops) and
// for one that quillet reads differently from how it looks: a line longer
// than 254 bytes, a carriage return (a Windows line end), a NUL byte.
//
// `origins`, where given, receives for each line of `formatted` the number of
// the definition's line it came from, or 0 for a blank line the layout added;
// a diff or an editor's edits follow from it without comparing texts.
bool formatDefinition(std::string_view definition, std::string& formatted, std::vector<Problem>& problems,
                      std::vector<int>* origins = nullptr);

}  // namespace quillet::format
