#include "preview/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace quillet::preview {

int readWholeFile(const std::filesystem::path& path, std::string& into) {
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return errno;
    struct stat info {};
    int error = fstat(fd, &info) == 0 ? 0 : errno;
    if (error == 0 && S_ISDIR(info.st_mode)) error = EISDIR;
    into.clear();
    // The size is a hint only: a file may change while it is read.
    if (error == 0 && info.st_size > 0) into.reserve(static_cast<std::size_t>(info.st_size));
    char block[65536];
    while (error == 0) {
        const ssize_t got = read(fd, block, sizeof block);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) error = errno;
        if (got <= 0) break;
        into.append(block, static_cast<std::size_t>(got));
    }
    close(fd);
    return error;
}

int writeWholeFile(const std::filesystem::path& path, std::string_view bytes) {
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) return errno;
    int error = 0;
    while (!bytes.empty()) {
        const ssize_t put = write(fd, bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR) continue;
        if (put < 0) {
            error = errno;
            break;
        }
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
    if (close(fd) != 0 && error == 0) error = errno;
    return error;
}

}  // namespace quillet::preview
