#pragma once

#include <cstdint>
#include <cstring>
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

    // Inline, so that a literal's length is known where it is written and the
    // copy of a short text is a few moves; the writers make millions of them.
    OutputFile& operator<<(std::string_view text) {
        if (text.size() > kCapacity - used_) return writeLarge(text);
        std::memcpy(buffer_.get() + used_, text.data(), text.size());
        used_ += text.size();
        return *this;
    }
    OutputFile& operator<<(const char* text) { return *this << std::string_view(text); }
    OutputFile& operator<<(char byte) {
        if (used_ == kCapacity) flush();
        buffer_[used_++] = byte;
        return *this;
    }
    OutputFile& operator<<(std::int32_t value);
    // A double's text depends on where it stands: see writeDouble.
    OutputFile& operator<<(double) = delete;
    OutputFile& operator<<(bool) = delete;

    // `value` as printf writes it with `format`, a single double conversion.
    void writeDouble(const char* format, double value);

private:
    char* reserve(std::size_t size);
    void flush();
    OutputFile& writeLarge(std::string_view text);

    static constexpr std::size_t kCapacity = std::size_t{1} << 20;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
    int fd_ = -1;
};

// Opens `fileName` in the context's output directory for a writer; a failure
// is reported on the error handler with the bare file name.
bool openOutputFile(OutputFile& out, const RunContext& context, std::string_view fileName);

}  // namespace quillet
