#include "docgen/text_escape.h"

namespace quillet {

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    if (from.empty()) return std::string(text);
    std::string result;
    result.reserve(text.size());
    std::size_t start = 0;
    for (std::size_t match = text.find(from); match != std::string_view::npos; match = text.find(from, start)) {
        result.append(text.substr(start, match - start)).append(to);
        start = match + from.size();
    }
    result.append(text.substr(start));
    return result;
}

std::string escapeText(std::string_view text) {
    // Most texts hold none of the marked characters and need no pass at all.
    if (text.find_first_of("&<>\\'`") == std::string_view::npos) return std::string(text);
    std::string escaped = replaceAll(text, "&", "&amp;");
    escaped = replaceAll(escaped, ">", "&gt;");
    escaped = replaceAll(escaped, "<", "&lt;");
    escaped = replaceAll(escaped, "\\\\", "<br/>");
    escaped = replaceAll(escaped, "''", "\"");
    return replaceAll(escaped, "``", "\"");
}

}  // namespace quillet
