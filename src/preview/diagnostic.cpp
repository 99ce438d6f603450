#include "preview/diagnostic.h"

#include <algorithm>

#include "companion/diagnostic_printer.h"

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
    return companion::formatDiagnostic({error.file(), error.line(), error.column()}, companion::Severity::Error,
                                       error.what(), "", colour);
}

}  // namespace quillet::preview
