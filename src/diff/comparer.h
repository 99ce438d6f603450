#pragma once

#include <vector>

#include "diff/change.h"
#include "model/definition_set.h"

namespace quillet::diff {

// Every change from `oldSet` to `newSet`, by keyword (or alias), option,
// rule name, then values, whatever order the definitions were written in;
// inReportOrder() then puts the categories first. Keywords, options and
// aliases are matched by name; alias records (read from aliases files) take
// part when the sets hold them. The changes refer to the sets' texts and to
// values kept in `values`.
ChangeList compareDefinitions(const DefinitionSet& oldSet, const DefinitionSet& newSet, TextArena& values);

}  // namespace quillet::diff
