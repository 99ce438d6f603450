#include "format/file_text.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "companion/file_text.h"

namespace quillet::format {

namespace {

bool failed(int& reason) {
    reason = errno;
    return false;
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
    companion::InputFile file;
    // Standard input is read, never mapped: its offset need not be 0.
    const bool standardInput = path == "-";
    if (!(standardInput ? file.adopt(::dup(STDIN_FILENO), reason) : file.open(path, reason))) return false;
    if (!standardInput && file.size() > 0) {
        void* mapped = ::mmap(nullptr, file.size(), PROT_READ, MAP_PRIVATE, file.fd(), 0);
        if (mapped != MAP_FAILED) {
            mapped_ = static_cast<char*>(mapped);
            size_ = file.size();
            return true;
        }
    }
    return companion::readFileText(file, read_, reason);
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
