#pragma once

#include <iosfwd>
#include <vector>

#include "lint/diagnostic.h"

namespace quillet::lint {

// One array of objects with the keys file, line, column, severity, rule and
// message; each diagnostic's notes follow it as objects of severity note.
void writeJson(std::ostream& out, const std::vector<FileReport>& reports);

// A SARIF 2.1.0 log with one run; notes become related locations.
void writeSarif(std::ostream& out, const std::vector<FileReport>& reports);

}  // namespace quillet::lint
