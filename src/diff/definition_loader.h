#pragma once

#include <optional>
#include <string>

#include "model/definition_set.h"
#include "reader/line_reader.h"

namespace quillet::diff {

// Why a file could not be read: quillet's first error message, at the line
// and 1-based column of the word it concerns (0 where there is none).
struct Diagnostic {
    std::string file;
    int line = 0;
    int column = 0;
    std::string message;
};

// Reads a definition file with quillet's reader and its rules, printing
// nothing; the first refusal is returned instead.
std::optional<Diagnostic> loadDefinition(const std::string& path, DefinitionSet& definitions);
// The same for a definition already open, diagnosed under the name `file`.
std::optional<Diagnostic> readDefinition(LineReader& input, const std::string& file, DefinitionSet& definitions);

// Reads an aliases file as quillet -html reads one, after its definition.
std::optional<Diagnostic> loadAliases(const std::string& path, DefinitionSet& definitions);

}  // namespace quillet::diff
