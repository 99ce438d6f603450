#pragma once

#include <pugixml.hpp>

#include <string>
#include <string_view>

#include "preview/diagnostic.h"

namespace quillet::preview {

// The error for bytes that pugixml could not read, placed where it stopped.
PreviewError notWellFormed(const std::string& file, std::string_view bytes, const pugi::xml_parse_result& result);

}  // namespace quillet::preview
