#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "companion/diagnostic_printer.h"
#include "lint/rules.h"
#include "model/reporter.h"

namespace quillet::lint {

using Severity = companion::Severity;

struct Note {
    Position position;
    std::string message;
};

// A replacement of the `length` bytes at `position` that a did-you-mean
// offers, for tools that apply it.
struct Fix {
    Position position;
    std::size_t length;
    std::string replacement;
};

// One problem at the line and 1-based byte column of the word that shows it,
// with notes that help to fix it.
struct Diagnostic {
    Severity severity;
    RuleId rule;
    Position position;
    std::string message;
    std::vector<Note> notes;
    std::vector<Fix> fixes;
};

// Everything found in one input file.
struct FileReport {
    std::string name;     // as shown: the path given, or <stdin>
    std::string path;     // where its lines are read again to be shown; empty: they are in `content`
    std::string content;  // standard input, kept
    std::vector<Diagnostic> diagnostics;
    std::size_t errorsNotShown = 0;  // beyond --max-errors
    Position firstErrorNotShown;
};

}  // namespace quillet::lint
