#pragma once

#include <vector>

#include "diff/change.h"
#include "model/definition_set.h"

namespace quillet::diff {

// Every change from `oldSet` to `newSet`, in report order. Keywords, options
// and aliases are matched by name; alias records (read from aliases files)
// take part when the sets hold them.
std::vector<Change> compareDefinitions(const DefinitionSet& oldSet, const DefinitionSet& newSet);

}  // namespace quillet::diff
