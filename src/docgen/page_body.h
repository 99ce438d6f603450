#pragma once

#include "output/output_file.h"
#include "model/definition_set.h"
#include "model/keyword_def.h"
#include "model/run_context.h"

namespace quillet {

// The body of a keyword topic. Read-only options are documented nowhere;
// the others appear in the order of the keyword's options list. Both return
// false, after reporting, when an option has a type outside the four known
// ones; a missing lookup table or an unmatched default is reported and
// skipped.

// Opens the syntax paragraph and leaves it open for the caller to close.
bool writeSyntax(const DefinitionSet& definitions, const RunContext& context, const KeywordDef& keyword,
                 OutputFile& out);

// The options list, the operands and the aliases.
bool writeOptionDetails(const DefinitionSet& definitions, const RunContext& context, const KeywordDef& keyword,
                        OutputFile& out);

}  // namespace quillet
