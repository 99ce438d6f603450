#include "preview/xml_error.h"

#include <cctype>

namespace quillet::preview {

PreviewError notWellFormed(const std::string& file, std::string_view bytes, const pugi::xml_parse_result& result) {
    std::string reason = result.description();
    if (!reason.empty()) reason[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(reason[0])));
    return PreviewError(file, "not well-formed XML: " + reason, bytes, static_cast<std::size_t>(result.offset));
}

}  // namespace quillet::preview
