#include "lint/raw_word.h"

namespace quillet::lint {

RawWord rawWordAt(std::string_view line, int column) {
    RawWord word;
    const std::size_t start = column > 0 ? static_cast<std::size_t>(column - 1) : line.size();
    if (start >= line.size()) return word;
    bool inQuote = false;
    std::size_t end = start;
    for (; end < line.size() && line[end] != '\0'; ++end) {
        const char c = line[end];
        if (c == '"') {
            inQuote = !inQuote;
            word.quoted = true;
        } else if (!inQuote && (c == ' ' || c == '\t' || c == '\n' || c == '#')) {
            break;
        }
    }
    if (end == line.size() && end > start && line[end - 1] == '\r') --end;
    word.text = line.substr(start, end - start);
    return word;
}

}  // namespace quillet::lint
