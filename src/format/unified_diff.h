#pragma once

#include <ostream>
#include <string_view>
#include <vector>

namespace quillet::format {

// Writes the unified diff (three lines of context) that turns `before` into
// `after`, both named `name`; nothing when they are equal. `origins` gives,
// for each line of `after`, the number of the line of `before` it came from
// (0 for an added line), as the formatter reports it: the lines are paired
// by it, not searched for.
void writeUnifiedDiff(std::ostream& out, std::string_view name, std::string_view before, std::string_view after,
                      const std::vector<int>& origins);

}  // namespace quillet::format
