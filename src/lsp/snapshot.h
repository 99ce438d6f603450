#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "lsp/document_text.h"
#include "lsp/text_position.h"

namespace quillet::lsp {

// One version of a document's text with its line index. A change makes a
// new one, sharing the old one's unchanged pieces; the last analysis keeps
// the one it read until the next is done.
struct Snapshot {
    // Past this size a document's memory is given back to the system after
    // each check, and whole answers about it are made on a thread of their own.
    static constexpr std::size_t kLargeText = std::size_t{32} << 20;

    DocumentText text;
    LineIndex lines;
    std::int64_t version = 0;

    // The text as a message brought it.
    Snapshot(std::string_view content, std::int64_t documentVersion)
        : text(content), lines(text), version(documentVersion) {}
    // `before` with `removed` bytes at `start` replaced by `inserted`.
    Snapshot(const Snapshot& before, std::size_t start, std::size_t removed, std::string_view inserted,
             std::int64_t documentVersion)
        : text(before.text, start, removed, inserted),
          lines(before.lines, text, start, removed, inserted.size()),
          version(documentVersion) {}
};

}  // namespace quillet::lsp
