#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace quillet::companion {

// A file open for reading, closed with the object. A directory opens like a
// file but reads as nothing, which would pass for an empty input: it is
// refused with EISDIR.
class InputFile {
public:
    InputFile() = default;
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    // False, with `reason` set to the errno value, when the file cannot be read.
    bool open(const std::filesystem::path& path, int& reason);
    // Standard input, or whatever descriptor is given; the copy is closed here.
    bool adopt(int fd, int& reason);

    int fd() const { return fd_; }
    // A regular file, whose size is known and which may be read again.
    bool regular() const { return regular_; }
    // A regular file's size when it was opened, else 0: a hint only, as a
    // file may change while it is read.
    std::size_t size() const { return size_; }

private:
    int fd_ = -1;
    bool regular_ = false;
    std::size_t size_ = 0;
};

// Reads what is left of `file` into `text`, replacing it; false with
// `reason` set to the errno value on a read error.
bool readFileText(const InputFile& file, std::string& text, int& reason);
// The whole file at `path`. `text` is reused, so that a run over many files
// allocates little.
bool readFileText(const std::filesystem::path& path, std::string& text, int& reason);

}  // namespace quillet::companion
