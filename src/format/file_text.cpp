#include "format/file_text.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace quillet::format {

namespace {

bool failed(int& reason) {
    reason = errno;
    return false;
}

bool readAll(int fd, std::string& text, int& reason) {
    char block[1 << 16];
    for (ssize_t count; (count = ::read(fd, block, sizeof block)) != 0;) {
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return failed(reason);
        text.append(block, static_cast<std::size_t>(count));
    }
    return true;
}

bool writeAll(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(fd, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace

FileText::~FileText() {
    if (mapped_ != nullptr) ::munmap(mapped_, size_);
}

bool FileText::open(const std::string& path, int& reason) {
    if (path == "-") return readAll(STDIN_FILENO, read_, reason);
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (fd < 0 || ::fstat(fd, &status) != 0) {
        failed(reason);
        if (fd >= 0) ::close(fd);
        return false;
    }
    bool read = true;
    if (S_ISDIR(status.st_mode)) {
        reason = EISDIR;
        read = false;
    } else if (S_ISREG(status.st_mode) && status.st_size > 0) {
        size_ = static_cast<std::size_t>(status.st_size);
        void* mapped = ::mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, fd, 0);
        if (mapped != MAP_FAILED) mapped_ = static_cast<char*>(mapped);
        else read = readAll(fd, read_, reason);
    } else {
        read = readAll(fd, read_, reason);
    }
    ::close(fd);
    return read;
}

bool replaceFileText(const std::string& path, std::string_view text, int& reason) {
    std::error_code error;
    const std::filesystem::path resolved = std::filesystem::canonical(path, error);
    const std::string target = error ? path : resolved.string();
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0) return failed(reason);
    std::string temporary = target + ".quillet-format-XXXXXX";
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0) return failed(reason);
    bool done = ::fchmod(fd, status.st_mode & 07777) == 0 && writeAll(fd, text);
    if (!done) reason = errno;
    if (::close(fd) != 0 && done) {
        done = false;
        reason = errno;
    }
    if (done && ::rename(temporary.c_str(), target.c_str()) != 0) {
        done = false;
        reason = errno;
    }
    if (!done) ::unlink(temporary.c_str());
    return done;
}

}  // namespace quillet::format
