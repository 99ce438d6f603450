#include "output/output_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace quillet {

namespace {

// Errors other than an interrupted call drop the rest: write errors have
// never been reported, and a full disk fails every later write alike.
void writeAll(int fd, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(fd, data, size);
        if (written < 0) {
            if (errno == EINTR) continue;
            return;
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
}

}  // namespace

OutputFile::OutputFile() : buffer_(std::make_unique_for_overwrite<char[]>(kCapacity)) {}

OutputFile::~OutputFile() { close(); }

bool OutputFile::open(const std::filesystem::path& path) {
    close();
    fd_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    return fd_ >= 0;
}

void OutputFile::close() {
    if (fd_ < 0) return;
    flush();
    ::close(fd_);
    fd_ = -1;
}

void OutputFile::flush() {
    if (fd_ >= 0) writeAll(fd_, buffer_.get(), used_);
    used_ = 0;
}

char* OutputFile::reserve(std::size_t size) {
    if (kCapacity - used_ < size) flush();
    return buffer_.get() + used_;
}

// A text that does not fit in what is left of the buffer.
OutputFile& OutputFile::writeLarge(std::string_view text) {
    flush();
    // Too big to gather: straight through.
    if (text.size() > kCapacity) {
        if (fd_ >= 0) writeAll(fd_, text.data(), text.size());
        return *this;
    }
    std::memcpy(buffer_.get() + used_, text.data(), text.size());
    used_ += text.size();
    return *this;
}

OutputFile& OutputFile::operator<<(std::int32_t value) {
    constexpr std::size_t kMaxDigits = 11;  // "-2147483648"
    char* start = reserve(kMaxDigits);
    used_ += static_cast<std::size_t>(std::to_chars(start, start + kMaxDigits, value).ptr - start);
    return *this;
}

void OutputFile::writeDouble(const char* format, double value) {
    // Enough for any double in %g notation with six digits, sign and exponent.
    char text[32];
    const int length = std::snprintf(text, sizeof text, format, value);
    if (length > 0) *this << std::string_view(text, std::min(static_cast<std::size_t>(length), sizeof text - 1));
}

bool openOutputFile(OutputFile& out, const RunContext& context, std::string_view fileName) {
    if (out.open(context.outputPath(fileName))) return true;
    context.report.error("Error opening file: %.*s\n", static_cast<int>(fileName.size()), fileName.data());
    return false;
}

}  // namespace quillet
