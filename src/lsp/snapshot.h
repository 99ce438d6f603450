#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "lsp/text_position.h"
#include "model/large_block.h"

namespace quillet::lsp {

// One version of a document's text with its line index. A change makes a
// new one; the last analysis keeps the one it read until the next is done.
class Snapshot {
    // Declared first: `text` views one of them.
    std::string owned_;
    LargeBlock block_;

public:
    static constexpr std::size_t kLargeText = std::size_t{32} << 20;

    std::string_view text;
    LineIndex lines;
    std::int64_t version = 0;

    // The text as a message brought it.
    Snapshot(std::string content, std::int64_t documentVersion)
        : owned_(std::move(content)), text(owned_), lines(text), version(documentVersion) {}
    // `before` with `removed` bytes at `start` replaced by `inserted`. A
    // keystroke copies the whole document; in large pages that copy costs a
    // few hundred page faults instead of one per 4 KiB.
    Snapshot(std::string_view before, const LineIndex& beforeLines, std::size_t start, std::size_t removed,
             std::string_view inserted, std::int64_t documentVersion);
};

}  // namespace quillet::lsp
