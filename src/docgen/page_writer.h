#pragma once

#include "output/output_file.h"
#include "model/definition_set.h"
#include "model/keyword_def.h"
#include "model/run_context.h"

namespace quillet {

// The topic of one record: a short one for an alias, the full reference for
// a keyword. False, after reporting, when the body cannot be written; what
// was written so far stays.
bool writeTopic(const DefinitionSet& definitions, const RunContext& context, const KeywordDef& record,
                OutputFile& out);

// Writes one topic <name>.html per documented record, in list order; stops
// at the first failure.
bool writeCommandPages(const DefinitionSet& definitions, const RunContext& context);

}  // namespace quillet
