#pragma once

#include "language/directive.h"

namespace quillet::format {

inline constexpr int kIndentStep = 4;

// Where a line that holds words stands in the layout.
struct LinePlace {
    int indent = 0;
    bool opensBlock = false;   // KEYWORD: or LOOKUP:, with one blank line before it
    bool lookupEntry = false;  // words of LOOKUP: continued: aligned with the table's other entries
};

// From the directive row of the line's first word (null for an argument) and
// the directive in force when the line starts (null before the first).
LinePlace placeLine(const DirectiveSpec* first, const DirectiveSpec* inForce);

}  // namespace quillet::format
