#include "lsp/snapshot.h"

#include <cstring>

namespace quillet::lsp {

Snapshot::Snapshot(std::string_view before, const LineIndex& beforeLines, std::size_t start, std::size_t removed,
                   std::string_view inserted, std::int64_t documentVersion)
    : block_(before.size() - removed + inserted.size()), version(documentVersion) {
    char* out = static_cast<char*>(block_.data());
    std::memcpy(out, before.data(), start);
    std::memcpy(out + start, inserted.data(), inserted.size());
    std::memcpy(out + start + inserted.size(), before.data() + start + removed, before.size() - start - removed);
    text = std::string_view(out, before.size() - removed + inserted.size());
    lines = LineIndex(beforeLines, text, start, removed, inserted.size());
}

}  // namespace quillet::lsp
