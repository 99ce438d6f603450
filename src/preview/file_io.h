#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillet::preview {

// Whole-file reads (through the companions' reader) and writes that report
// errno (0 on success), for messages that say why. `into` is reused, so that
// a run over many topics allocates little.
int readWholeFile(const std::filesystem::path& path, std::string& into);
int writeWholeFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace quillet::preview
