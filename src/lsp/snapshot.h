#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "lsp/text_position.h"

namespace quillet::lsp {

// One version of a document's text with its line index. A change makes a
// new one; the last analysis keeps the one it read until the next is done.
struct Snapshot {
    std::string text;
    LineIndex lines;
    std::int64_t version = 0;

    Snapshot(std::string content, std::int64_t documentVersion)
        : text(std::move(content)), lines(text), version(documentVersion) {}
    Snapshot(std::string content, LineIndex index, std::int64_t documentVersion)
        : text(std::move(content)), lines(std::move(index)), version(documentVersion) {}
};

}  // namespace quillet::lsp
