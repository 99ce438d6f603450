// Every message the reader raises is a row of the diagnostics table.
#include <gtest/gtest.h>

#include <filesystem>

#include "language/diagnostic.h"
#include "reader/definition_reader.h"
#include "support/tool_process.h"

using namespace quillet;

// Over every refused definition of the golden cases: each message comes with
// its identity, its text is the row's format filled in, and each refusal
// begins with a message that names its rule.
TEST(DiagnosticTable, TheReaderRaisesOnlyRowsOfTheTable) {
    for (const auto& entry : std::filesystem::directory_iterator(GOLDEN_DIR "/reader")) {
        const std::filesystem::path input = entry.path() / "input.def";
        if (!std::filesystem::exists(input)) continue;
        SCOPED_TRACE(entry.path().filename().string());
        const std::string text = quillet::testing::readFile(input);
        std::vector<Reporter::Message> messages;
        std::vector<std::string> texts;
        Reporter report;
        report.listen([&](const Reporter::Message& message) {
            messages.push_back(message);
            texts.emplace_back(message.text);
        });
        DefinitionSet definitions;
        DefinitionReader reader(definitions, report);
        LineReader lines(text);
        const bool accepted = reader.read(lines);
        bool first = true;
        for (std::size_t i = 0; i < messages.size(); ++i) {
            ASSERT_GE(messages[i].identity, 0) << texts[i];
            const DiagnosticSpec& row = kDiagnostics.at(static_cast<std::size_t>(messages[i].identity));
            EXPECT_EQ(row.channel, messages[i].channel) << texts[i];
            if (row.channel != Channel::Error && row.channel != Channel::StandardError) continue;
            if (first && !accepted) {
                EXPECT_NE(row.rule, RefusalRule::None) << texts[i];
            }
            first = false;
        }
    }
}
