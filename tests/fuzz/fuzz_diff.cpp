// quillet-diff's comparer and report writers on a pair of arbitrary
// definitions: the input up to its first line "====" is the old definition,
// the rest the new one (without that line, both are the input).
// Beyond the sanitizers it checks the comparer's contract: a definition
// compared with itself shows no change, and each change one way has its
// counterpart the other way.
#include <cstdlib>
#include <sstream>
#include <string_view>

#include "diff/comparer.h"
#include "diff/definition_loader.h"
#include "diff/report.h"
#include "fuzz_support.h"

using namespace quillet;
using namespace quillet::diff;

namespace {

bool load(std::string_view text, DefinitionSet& definitions) {
    LineReader input(text);
    const std::optional<Diagnostic> problem = readDefinition(input, "fuzz.def", definitions);
    if (problem && problem->message.empty()) std::abort();
    return !problem;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input = fuzz::bytesOf(data, size);
    constexpr std::string_view kSeparator = "\n====\n";
    const std::size_t split = input.find(kSeparator);
    const std::string_view whole(input);
    const std::string_view oldText = split == std::string::npos ? whole : whole.substr(0, split + 1);
    const std::string_view newText = split == std::string::npos ? whole : whole.substr(split + kSeparator.size());

    DefinitionSet oldSet;
    DefinitionSet newSet;
    if (!load(oldText, oldSet) || !load(newText, newSet)) return 0;
    TextArena values;
    if (!compareDefinitions(newSet, newSet, values).empty()) std::abort();
    const ChangeList forward = compareDefinitions(oldSet, newSet, values);
    if (compareDefinitions(newSet, oldSet, values).size() != forward.size()) std::abort();

    std::ostringstream sink;
    writeTextReport(sink, forward, "old.def", "new.def", true);
    writeJsonReport(sink, forward);
    writeMarkdownReport(sink, forward);
    return 0;
}
