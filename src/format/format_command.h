#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace quillet::format {

// One run of quillet-format on its arguments (without the program name).
// Formatted text, the list of --check and the diffs go to `out`; messages to
// `err`, coloured when `colour` is set.
int runQuilletFormat(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, bool colour);

}  // namespace quillet::format
