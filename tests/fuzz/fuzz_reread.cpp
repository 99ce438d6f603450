// Reading one keyword again against reading the whole definition, on random
// texts and edits. The input is split at 0xFF bytes: the first piece is the
// definition, each later one an edit (two bytes place it, a third says how
// many bytes it removes, the rest is typed). After each edit the analysis
// made by reading a keyword again, where one is made, must equal the whole
// reading's; anything else aborts.
#include <cstdio>
#include <cstdlib>

#include "fuzz_support.h"
#include "lsp/same_analysis.h"

using namespace quillet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzz::bytesOf(data, size);
    std::size_t at = bytes.find('\xFF');
    std::string text = bytes.substr(0, at);
    std::shared_ptr<const lsp::Analysis> previous =
        lsp::analyse(std::make_shared<const lsp::Snapshot>(text, 1), 1, "", 0);
    for (std::int64_t version = 2; at != std::string::npos && at < bytes.size(); ++version) {
        const std::size_t end = bytes.find('\xFF', at + 1);
        const std::string_view edit = std::string_view(bytes).substr(at + 1, end == std::string::npos ? end : end - at - 1);
        at = end;
        if (edit.size() < 3) continue;
        const std::size_t place = (static_cast<unsigned char>(edit[0]) << 8 | static_cast<unsigned char>(edit[1])) %
                                  (text.size() + 1);
        text.replace(place, static_cast<unsigned char>(edit[2]) % 8, edit.substr(3));
        auto snapshot = std::make_shared<const lsp::Snapshot>(text, version);
        auto whole = lsp::analyse(snapshot, 1, "", 0);
        auto again = lsp::reanalyse(*previous, snapshot, 1, "");
        if (again != nullptr) {
            const std::string difference = lsp::differenceBetween(*again, *whole);
            if (!difference.empty()) {
                std::fprintf(stderr, "reading the keyword again differs: %s\n", difference.c_str());
                std::abort();
            }
        }
        previous = again != nullptr ? again : whole;
    }
    return 0;
}
