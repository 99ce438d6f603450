#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quillet::preview {

// A failure that ends the run, reported as "file:line:col: error: message"
// (line and column omitted when they are 0).
class PreviewError : public std::runtime_error {
public:
    PreviewError(std::string file, std::string message, int line = 0, int column = 0)
        : std::runtime_error(std::move(message)), file_(std::move(file)), line_(line), column_(column) {}

    // Places the error at a byte offset of the file's contents.
    PreviewError(std::string file, std::string message, std::string_view contents, std::size_t offset);

    const std::string& file() const { return file_; }
    int line() const { return line_; }
    int column() const { return column_; }

private:
    std::string file_;
    int line_;
    int column_;
};

// The whole diagnostic line, with a line end, in the companions' one form;
// `colour` adds terminal styles.
std::string formatDiagnostic(const PreviewError& error, bool colour);

}  // namespace quillet::preview
