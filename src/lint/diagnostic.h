#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "lint/rules.h"
#include "model/reporter.h"

namespace quillet::lint {

enum class Severity { Error, Warning, Note };

struct Note {
    Position position;
    std::string message;
};

// One problem at the line and 1-based byte column of the word that shows it,
// with notes that help to fix it.
struct Diagnostic {
    Severity severity;
    RuleId rule;
    Position position;
    std::string message;
    std::vector<Note> notes;
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
