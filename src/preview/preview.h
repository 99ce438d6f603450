#pragma once

#include <filesystem>

namespace quillet::preview {

// Builds the browsable site of the command reference that quillet -html
// wrote into `reference` (its Commands.fltoc and topics, which are only
// read) and puts it in place of `site`. Throws PreviewError, leaving `site`
// as it was, when the reference cannot be read or the site not written.
void buildPreview(const std::filesystem::path& reference, const std::filesystem::path& site);

}  // namespace quillet::preview
