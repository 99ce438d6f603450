// The linter in-process on arbitrary bytes as a definition (and as an
// aliases file), through every output format. Beyond the sanitizers it
// checks that its verdict is quillet's: quillet, run in-process on the same
// bytes, fails exactly when the linter reports an error.
#include <cstdlib>
#include <limits>
#include <sstream>
#include <unordered_set>

#include "fuzz_support.h"
#include "lint/alias_check.h"
#include "lint/definition_linter.h"
#include "lint/json_output.h"
#include "lint/text_output.h"
#include "quillet/driver.h"

using namespace quillet;

namespace {

const RunContext& context() {
    static const RunContext instance = fuzz::quietContext();
    return instance;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzz::bytesOf(data, size);

    lint::DefinitionLinter linter(std::numeric_limits<std::size_t>::max());
    LineReader lines(bytes);
    linter.read(lines);
    std::unordered_set<std::string> keywords;
    for (const KeywordDef* keyword : linter.definitions().keywords) keywords.emplace(keyword->name);
    lint::FileReport report;
    report.name = "fuzz.def";
    report.content = bytes;
    report.diagnostics = linter.takeDiagnostics();
    bool linted = false;
    for (const lint::Diagnostic& diagnostic : report.diagnostics)
        linted = linted || diagnostic.severity == lint::Severity::Error;

    LineReader input(bytes);
    const bool failed = runQuillet({}, input, context()) != 0;
    fuzz::emptyDirectory(context().outputDir);
    if (failed != linted) std::abort();

    lint::FileReport aliases;
    aliases.name = "fuzz.cmd";
    aliases.content = bytes;
    aliases.diagnostics = lint::checkAliases(bytes, std::move(keywords));
    const std::vector<lint::FileReport> reports{std::move(report), std::move(aliases)};
    std::ostringstream sink;
    lint::writeText(sink, reports, size % 2 == 0, size % 3 == 0);
    lint::writeJson(sink, reports);
    lint::writeSarif(sink, reports);
    return 0;
}
