#pragma once

#include <iosfwd>
#include <vector>

#include "lint/diagnostic.h"

namespace quillet::lint {

// Writes each diagnostic as `FILE:LINE:COL: error: MESSAGE [rule]` with the
// source line and a caret under the column, then `N errors, M warnings`
// (`N errors (K shown)` beyond --max-errors, whose note comes last). `quiet`
// leaves the summary out when there is nothing to report.
void writeText(std::ostream& out, const std::vector<FileReport>& reports, bool colour, bool quiet);

}  // namespace quillet::lint
