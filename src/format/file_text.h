#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet::format {

// The bytes of a file, or of standard input for "-". A regular file is
// mapped rather than copied: a large definition is read once, by the
// formatter itself.
class FileText {
public:
    FileText() = default;
    ~FileText();
    FileText(const FileText&) = delete;
    FileText& operator=(const FileText&) = delete;

    // False, with `reason` set to the errno value, when it cannot be read (a
    // directory included).
    bool open(const std::string& path, int& reason);
    std::string_view view() const { return mapped_ != nullptr ? std::string_view(mapped_, size_) : read_; }

private:
    char* mapped_ = nullptr;
    std::size_t size_ = 0;
    std::string read_;  // what could not be mapped
};

// Replaces the file at `path` (or the file a symbolic link there names) with
// `text`, atomically: the text goes to a temporary file beside it, with the
// file's permissions, which is then renamed over it. On failure, with
// `reason` set, the file is as it was.
bool replaceFileText(const std::string& path, std::string_view text, int& reason);

}  // namespace quillet::format
