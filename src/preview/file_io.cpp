#include "preview/file_io.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "companion/file_text.h"

namespace quillet::preview {

int readWholeFile(const std::filesystem::path& path, std::string& into) {
    int reason = 0;
    return companion::readFileText(path, into, reason) ? 0 : reason;
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
