#include "preview/diagnostic.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace quillet::preview {

PreviewError::PreviewError(std::string file, std::string message, std::string_view contents, std::size_t offset)
    : PreviewError(std::move(file), std::move(message)) {
    // Lines count line feeds, so CRLF files number their lines as editors do;
    // columns count bytes from 1.
    const std::string_view before = contents.substr(0, std::min(offset, contents.size()));
    line_ = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
    const std::size_t lineStart = before.rfind('\n');
    column_ = 1 + static_cast<int>(lineStart == std::string_view::npos ? before.size() : before.size() - lineStart - 1);
}

std::string formatDiagnostic(const PreviewError& error, bool colour) {
    std::string location = error.file();
    if (error.line() > 0) {
        location += ':';
        location += std::to_string(error.line());
        location += ':';
        location += std::to_string(error.column());
    }
    if (!colour) return location + ": error: " + error.what() + "\n";
    return "\033[1m" + location + ": \033[31merror:\033[0m\033[1m " + error.what() + "\033[0m\n";
}

bool colourWanted() {
    const char* noColour = std::getenv("NO_COLOR");
    return isatty(STDERR_FILENO) && (noColour == nullptr || *noColour == '\0');
}

}  // namespace quillet::preview
