#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillet::lsp {

enum class Frame {
    Message,    // a whole body was read
    Malformed,  // a header without a usable Content-Length; reading goes on after it
    End,        // the input ended or failed
};

// Reads the protocol's messages from a file descriptor: header lines ending
// in CR LF (a bare LF is taken too), a blank line, then Content-Length bytes.
class MessageReader {
public:
    static constexpr std::size_t kLongestHeader = 64 * 1024;
    static constexpr std::size_t kLargestBody = std::size_t{1} << 30;

    explicit MessageReader(int fd) : fd_(fd) {}

    Frame next(std::string& body);

private:
    bool fill();
    bool resynchronise();

    int fd_;
    std::string buffer_;
    std::size_t at_ = 0;
    bool lost_ = false;  // after a malformed header: skip to the next one
};

// Writes one framed message; false when the output is gone.
bool writeMessage(int fd, std::string_view body);

}  // namespace quillet::lsp
