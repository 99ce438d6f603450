#include "reader/line_reader.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace quillet {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 20;
// A block, a whole longest line kept from the block before, and its NUL.
constexpr std::size_t kBufferSize = kBlock + LineReader::kMaxLine + 2;

}  // namespace

LineReader::LineReader(int fd) : fd_(fd), buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)) {
    struct stat status {};
    if (::fstat(fd, &status) == 0 && S_ISREG(status.st_mode)) sizeHint_ = static_cast<std::size_t>(status.st_size);
}

LineReader::LineReader(std::string_view text, const std::atomic<bool>* stop)
    : pending_(text), stop_(stop), buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)), sizeHint_(text.size()) {}

LineReader::LineReader(std::vector<std::string_view> pieces, const std::atomic<bool>* stop)
    : pieces_(std::move(pieces)), stop_(stop), buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)) {
    for (const std::string_view piece : pieces_) sizeHint_ += piece.size();
}

// Moves what is left to the front and reads up to one block behind it.
void LineReader::refill() {
    std::memmove(buffer_.get(), buffer_.get() + start_, end_ - start_);
    end_ -= start_;
    start_ = 0;
    if (fd_ < 0) {
        // Keeps its pointer: memcpy takes none that is null, even for no bytes.
        if (stop_ != nullptr && stop_->load(std::memory_order_relaxed)) {
            pending_.remove_prefix(pending_.size());
            nextPiece_ = pieces_.size();
        }
        for (std::size_t room = kBufferSize - 1 - end_; room > 0;) {
            while (pending_.empty() && nextPiece_ < pieces_.size()) pending_ = pieces_[nextPiece_++];
            const std::size_t count = std::min(room, pending_.size());
            if (count == 0) break;
            std::memcpy(buffer_.get() + end_, pending_.data(), count);
            pending_.remove_prefix(count);
            end_ += count;
            room -= count;
        }
        atEnd_ = pending_.empty() && nextPiece_ == pieces_.size();
        return;
    }
    while (end_ - start_ <= kMaxLine && !atEnd_) {
        const ssize_t count = ::read(fd_, buffer_.get() + end_, kBufferSize - 1 - end_);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) atEnd_ = true;
        else end_ += static_cast<std::size_t>(count);
    }
}

bool LineReader::next(Line& line) {
    if (end_ - start_ <= kMaxLine && !atEnd_) refill();
    const std::size_t available = end_ - start_;
    char* begin = buffer_.get() + start_;
    // The line feed may stand right after the longest line.
    auto* feed = static_cast<char*>(std::memchr(begin, '\n', std::min(available, kMaxLine + 1)));
    if (feed != nullptr) {
        *feed = '\0';
        line = Line{begin, static_cast<std::size_t>(feed - begin)};
        start_ += line.size + 1;
        return true;
    }
    // No line feed: the last line of the input, if it fits, or one too long.
    if (available == 0) return false;
    if (available > kMaxLine) {
        longLine_ = true;
        return false;
    }
    begin[available] = '\0';
    line = Line{begin, available};
    start_ = end_;
    return true;
}

}  // namespace quillet
