#include "companion/file_text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace quillet::companion {

InputFile::~InputFile() {
    if (fd_ >= 0) ::close(fd_);
}

bool InputFile::adopt(int fd, int& reason) {
    if (fd_ >= 0) ::close(fd_);
    fd_ = fd;
    regular_ = false;
    size_ = 0;
    struct stat status {};
    if (fd_ < 0 || ::fstat(fd_, &status) != 0) {
        reason = errno;
        return false;
    }
    if (S_ISDIR(status.st_mode)) {
        reason = EISDIR;
        return false;
    }
    regular_ = S_ISREG(status.st_mode);
    if (regular_ && status.st_size > 0) size_ = static_cast<std::size_t>(status.st_size);
    return true;
}

bool InputFile::open(const std::filesystem::path& path, int& reason) {
    return adopt(::open(path.c_str(), O_RDONLY | O_CLOEXEC), reason);
}

bool readFileText(const InputFile& file, std::string& text, int& reason) {
    text.clear();
    text.reserve(file.size());
    char block[1 << 16];
    for (;;) {
        const ssize_t count = ::read(file.fd(), block, sizeof block);
        if (count == 0) return true;
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            reason = errno;
            return false;
        }
        text.append(block, static_cast<std::size_t>(count));
    }
}

bool readFileText(const std::filesystem::path& path, std::string& text, int& reason) {
    InputFile file;
    return file.open(path, reason) && readFileText(file, text, reason);
}

}  // namespace quillet::companion
