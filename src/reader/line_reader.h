#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace quillet {

// One line of the definition, NUL-terminated in the reader's buffer: its
// text as the tokenizer sees it ends at the first NUL, while `size` counts
// every byte up to the line end.
struct Line {
    char* text;
    std::size_t size;
};

// Reads the definition in large blocks and cuts it into lines exactly as a
// getline into a 255-byte buffer would: a line of at most 254 bytes, a line
// feed ending it, a carriage return an ordinary byte. A longer line, a read
// error and the end of input all end the definition.
class LineReader {
public:
    static constexpr std::size_t kMaxLine = 254;

    explicit LineReader(int fd);
    // Reads a definition held in memory, as the tests, fuzzers and the
    // language server do. Once `stop` is set, the definition ends where the
    // block being read ends: the server gives up a check that a newer
    // change has made moot.
    explicit LineReader(std::string_view text, const std::atomic<bool>* stop = nullptr);
    // Reads the pieces one after the other, as one text.
    explicit LineReader(std::vector<std::string_view> pieces, const std::atomic<bool>* stop = nullptr);

    bool next(Line& line);
    // The definition's size in bytes where it is known (a regular file or a
    // text in memory), else 0.
    std::size_t sizeHint() const { return sizeHint_; }
    // After next() returned false: whether a line too long ended the input.
    bool stoppedAtLongLine() const { return longLine_; }

private:
    void refill();

    int fd_ = -1;
    // The in-memory definition not yet copied: the rest of a piece, and
    // the pieces after it.
    std::string_view pending_;
    std::vector<std::string_view> pieces_;
    std::size_t nextPiece_ = 0;
    const std::atomic<bool>* stop_ = nullptr;
    std::unique_ptr<char[]> buffer_;
    std::size_t start_ = 0;
    std::size_t end_ = 0;
    bool atEnd_ = false;
    std::size_t sizeHint_ = 0;
    bool longLine_ = false;
};

}  // namespace quillet
