#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace quillet::companion {

enum class Severity : std::uint8_t { Error, Warning, Note };

// "error", "warning" or "note", as diagnostics and the JSON outputs name them.
std::string_view severityName(Severity severity);

// Where a diagnostic points: a file and, where known, the line and the
// 1-based byte column (0: not known, left out).
struct SourcePlace {
    std::string_view file;
    int line = 0;
    int column = 0;
};

// The one diagnostic line of the companions, with its line end:
//   file:line:col: severity: message [rule]
// A line or column of 0 is left out, and " [rule]" when `rule` is empty.
// With colour the place and the message are bold and the severity has its
// own colour.
std::string formatDiagnostic(const SourcePlace& place, Severity severity, std::string_view message,
                             std::string_view rule, bool colour);
void printDiagnostic(std::ostream& out, const SourcePlace& place, Severity severity, std::string_view message,
                     std::string_view rule, bool colour);

// quillet's message as one diagnostic line: without the line ends and
// trailing blanks of its texts, a message of two lines joined.
std::string oneLine(std::string_view text);

// The mark under the column of a source line shown below a diagnostic.
std::string caretMark(bool colour);

}  // namespace quillet::companion
