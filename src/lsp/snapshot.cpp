#include "lsp/snapshot.h"

#include <cstring>

namespace quillet::lsp {

Snapshot::Snapshot(std::string_view before, const LineIndex& beforeLines, std::size_t start, std::size_t removed,
                   std::string_view inserted, std::int64_t documentVersion)
    : version(documentVersion) {
    const std::size_t size = before.size() - removed + inserted.size();
    char* out = nullptr;
    // A small document stays on the heap: large pages would only round it up.
    if (size < kLargeText) {
        owned_.resize(size);
        out = owned_.data();
    } else {
        block_ = LargeBlock(size);
        out = static_cast<char*>(block_.data());
    }
    std::memcpy(out, before.data(), start);
    std::memcpy(out + start, inserted.data(), inserted.size());
    std::memcpy(out + start + inserted.size(), before.data() + start + removed, before.size() - start - removed);
    text = std::string_view(out, size);
    lines = LineIndex(beforeLines, text, start, removed, inserted.size());
}

}  // namespace quillet::lsp
