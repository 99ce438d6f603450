// The linter's first error is quillet's: over generated definitions and
// random mutations of them, quillet fails exactly when the linter reports an
// error, and when quillet names the line it stopped at (or, at the end of
// input, the line of the incomplete directive), the first error is there.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "lint/definition_linter.h"
#include "quillet/driver.h"
#include "support/definition_generator.h"
#include "support/tool_process.h"

using namespace quillet;
using namespace quillet::testing;

namespace {

struct QuilletVerdict {
    bool failed;
    int line;  // 0: no line named
};

// quillet in-process; the line it names: where it stopped, or else the one
// its first message names.
QuilletVerdict runQuilletOn(const std::string& definition, const std::filesystem::path& outputDir) {
    std::vector<std::string> messages;
    RunContext context;
    context.outputDir = outputDir;
    context.report.listen([&](const Reporter::Message& message) {
        if (message.channel == Channel::Error || message.channel == Channel::StandardError)
            messages.emplace_back(message.text);
    });
    LineReader input(definition);
    const bool failed = runQuillet({}, input, context) != 0;
    // The number right after `prefix` in `message`, or 0.
    auto lineAfter = [](std::string_view message, std::string_view prefix) {
        const std::size_t at = message.find(prefix);
        return at == std::string_view::npos ? 0 : std::atoi(message.data() + at + prefix.size());
    };
    for (const std::string& message : messages)
        for (const char* summary : {"Error with definition on line ", "Error processing command on line: ",
                                    "Cannot tokenize line "})
            if (message.starts_with(summary)) return {failed, lineAfter(message, summary)};
    if (!messages.empty()) return {failed, lineAfter(messages.front(), "line: ")};
    return {failed, 0};
}

TEST(LintConsistency, FirstErrorIsQuillets) {
    quillet::testing::ScratchDir scratch;
    std::mt19937 random(20261123);
    int failing = 0;
    for (int round = 0; round < 800; ++round) {
        Lines lines = generate(random);
        for (int m = 0, count = static_cast<int>(random() % 4); m < count; ++m) mutate(lines, random);
        const std::string definition = join(lines);

        const QuilletVerdict quillet = runQuilletOn(definition, scratch.path());
        lint::DefinitionLinter linter(1);
        LineReader input(definition);
        linter.read(input);
        const std::vector<lint::Diagnostic> found = linter.takeDiagnostics();
        auto firstError = std::find_if(found.begin(), found.end(), [](const lint::Diagnostic& diagnostic) {
            return diagnostic.severity == lint::Severity::Error;
        });
        ASSERT_EQ(quillet.failed, firstError != found.end()) << definition;
        if (!quillet.failed) continue;
        ++failing;
        if (quillet.line > 0) {
            ASSERT_EQ(firstError->position.line, quillet.line) << definition;
        }
    }
    // The mutations must break a fair share of the definitions.
    EXPECT_GT(failing, 250);
}

}  // namespace
