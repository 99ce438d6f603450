#pragma once

#include <string_view>

#include "output/output_file.h"
#include "model/keyword_def.h"

namespace quillet {

// The parts every topic shares. Every line ends in "\r\n" on every platform.

// The nine head lines; `title` is written as it stands.
void writePageHead(OutputFile& out, std::string_view title);

// The navigation table written after the head and before the foot; its
// PREV_KEYWORD / NEXT_KEYWORD placeholders are filled in by the
// documentation project, not here.
void writeNavigationTable(OutputFile& out);

void writePageFoot(OutputFile& out);

// One link per entry of the record's `aliases`, ordered by name, separated by
// ", " and a line end; no line end after the last.
void writeAliasLinks(OutputFile& out, const KeywordDef& record);

}  // namespace quillet
