#pragma once

#include <iosfwd>
#include <vector>

#include "lint/diagnostic.h"
#include "lint/options.h"

namespace quillet::lint {

// Lints every file the options name (and the aliases file against all of
// them), reporting unreadable ones on `err` and setting `unreadable`.
// Warnings that are off are left out, --werror makes the others errors, and
// errors beyond --max-errors give way to one note for the run.
std::vector<FileReport> lintFiles(const Options& options, std::ostream& err, bool& unreadable);

// The whole run: lints, writes the chosen format (text on `err`, the others
// on `out`) and returns the exit status.
int runLint(const Options& options, std::ostream& out, std::ostream& err, bool colour);

}  // namespace quillet::lint
