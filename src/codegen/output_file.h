#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string_view>

#include "model/run_context.h"

namespace quillet {

// One generated file. Text is gathered in a large buffer and handed to the
// system in big writes; a file is closed (and its buffer written) by the next
// open, by close() or by destruction, so a writer that stops half-way leaves
// what it wrote. Write errors are not detected; only the open can fail.
class OutputFile {
public:
    OutputFile();
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Closes any file still open, then creates or truncates `path`.
    bool open(const std::filesystem::path& path);
    void close();

    OutputFile& operator<<(std::string_view text);
    OutputFile& operator<<(const char* text) { return *this << std::string_view(text); }
    OutputFile& operator<<(char byte);
    OutputFile& operator<<(std::int32_t value);
    // A double's text depends on where it stands: see writeDouble.
    OutputFile& operator<<(double) = delete;
    OutputFile& operator<<(bool) = delete;

    // `value` as printf writes it with `format`, a single double conversion.
    void writeDouble(const char* format, double value);

private:
    char* reserve(std::size_t size);
    void flush();

    static constexpr std::size_t kCapacity = std::size_t{1} << 20;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
    int fd_ = -1;
};

// Opens `fileName` in the context's output directory for a writer; a failure
// is reported on the error handler with the bare file name.
bool openOutputFile(OutputFile& out, const RunContext& context, std::string_view fileName);

}  // namespace quillet
