#pragma once

#include <iosfwd>
#include <vector>

#include "lint/diagnostic.h"

namespace quillet::lint {

// Writes each diagnostic as `FILE:LINE:COL: error: MESSAGE [rule]` with the
// source line and a caret under the column, then `N errors, M warnings`.
void writeText(std::ostream& out, const std::vector<FileReport>& reports, bool colour);

}  // namespace quillet::lint
