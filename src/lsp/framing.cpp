#include "lsp/framing.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>

namespace quillet::lsp {

namespace {

constexpr std::string_view kLengthField = "Content-Length:";

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
        if (lower(a[i]) != lower(b[i])) return false;
    }
    return true;
}

// The body length a header block gives, or false when it gives none usable.
bool contentLength(std::string_view header, std::size_t& length) {
    bool found = false;
    while (!header.empty()) {
        const std::size_t end = header.find('\n');
        std::string_view line = header.substr(0, end);
        header = end == std::string_view::npos ? std::string_view() : header.substr(end + 1);
        if (line.ends_with('\r')) line.remove_suffix(1);
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos || !equalsIgnoringCase(line.substr(0, colon + 1), kLengthField)) continue;
        std::string_view value = line.substr(colon + 1);
        while (!value.empty() && (value.front() == ' ' || value.front() == '\t')) value.remove_prefix(1);
        while (!value.empty() && (value.back() == ' ' || value.back() == '\t')) value.remove_suffix(1);
        const auto [end_, error] = std::from_chars(value.data(), value.data() + value.size(), length);
        if (error != std::errc() || end_ != value.data() + value.size() || value.empty()) return false;
        found = true;
    }
    return found && length <= MessageReader::kLargestBody;
}

}  // namespace

bool MessageReader::fill() {
    char block[1 << 16];
    for (;;) {
        const ssize_t count = ::read(fd_, block, sizeof block);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        buffer_.append(block, static_cast<std::size_t>(count));
        return true;
    }
}

// Drops what is left of a broken message, up to the next header's length
// field; false at the end of input.
bool MessageReader::resynchronise() {
    for (;;) {
        const std::size_t found = buffer_.find(kLengthField, at_);
        if (found != std::string::npos) {
            at_ = found;
            lost_ = false;
            return true;
        }
        // Keeps a tail that may be the start of the field.
        if (buffer_.size() - at_ > kLengthField.size()) at_ = buffer_.size() - kLengthField.size();
        buffer_.erase(0, at_);
        at_ = 0;
        if (!fill()) return false;
    }
}

Frame MessageReader::next(std::string& body) {
    if (at_ > kLongestHeader) {
        buffer_.erase(0, at_);
        at_ = 0;
    }
    if (lost_ && !resynchronise()) return Frame::End;
    std::size_t headerEnd = std::string::npos;
    std::size_t separator = 0;
    for (std::size_t searched = at_;;) {
        // The header ends at an empty line, whichever line ends it uses.
        for (std::size_t at = searched; at < buffer_.size(); ++at) {
            if (buffer_[at] != '\n') continue;
            if (at == at_) separator = 1;
            else if (buffer_[at - 1] == '\n') separator = 1;
            else if (buffer_[at - 1] == '\r' && (at - 1 == at_ || buffer_[at - 2] == '\n')) separator = 2;
            else continue;
            headerEnd = at + 1 - separator;
            break;
        }
        if (headerEnd != std::string::npos) break;
        searched = buffer_.size();
        if (buffer_.size() - at_ > kLongestHeader) {
            at_ = buffer_.size();
            lost_ = true;
            return Frame::Malformed;
        }
        if (!fill()) return Frame::End;
    }
    std::size_t length = 0;
    const bool usable = contentLength(std::string_view(buffer_).substr(at_, headerEnd - at_), length);
    at_ = headerEnd + separator;
    if (!usable) {
        lost_ = true;
        return Frame::Malformed;
    }
    // The rest of the body is read straight into it: a large document's
    // message is then held once, not in the buffer and in the body too.
    const std::size_t buffered = std::min(length, buffer_.size() - at_);
    body.assign(buffer_, at_, buffered);
    at_ += buffered;
    body.resize(length);
    for (std::size_t got = buffered; got < length;) {
        const ssize_t count = ::read(fd_, body.data() + got, length - got);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return Frame::End;
        got += static_cast<std::size_t>(count);
    }
    // Keeps the buffer from growing with every message, and gives back
    // what a large document's message took.
    if (at_ == buffer_.size()) {
        if (buffer_.capacity() > kLongestHeader * 16) std::string().swap(buffer_);
        buffer_.clear();
        at_ = 0;
    }
    return Frame::Message;
}

bool writeMessage(int fd, std::string_view body) {
    const std::string header = "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n";
    for (std::string_view part : {std::string_view(header), body}) {
        while (!part.empty()) {
            const ssize_t count = ::write(fd, part.data(), part.size());
            if (count < 0 && errno == EINTR) continue;
            if (count <= 0) return false;
            part.remove_prefix(static_cast<std::size_t>(count));
        }
    }
    return true;
}

}  // namespace quillet::lsp
