#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "diff/change.h"

namespace quillet::diff {

// One line a change, `category RULE keyword[.option]: old -> new (OLD:line,
// NEW:line)`, then the counts; with `colour`, the category words are
// coloured for a terminal.
void writeTextReport(std::ostream& out, const ChangeList& changes, const std::string& oldPath,
                     const std::string& newPath, bool colour);

// {"changes": [...], "summary": {...}}, absent values as null.
void writeJsonReport(std::ostream& out, const ChangeList& changes);

// Release notes for the application's users: by category, then keyword.
void writeMarkdownReport(std::ostream& out, const ChangeList& changes);

}  // namespace quillet::diff
