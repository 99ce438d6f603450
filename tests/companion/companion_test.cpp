#include <gtest/gtest.h>

#include <cerrno>

#include "companion/diagnostic_printer.h"
#include "companion/file_text.h"
#include "companion/terminal.h"
#include "support/tool_process.h"

using namespace quillet::companion;

TEST(Terminal, ColourOnlyOnATerminalWithoutANonEmptyNoColor) {
    EXPECT_TRUE(colourOn(true, nullptr));
    EXPECT_TRUE(colourOn(true, ""));  // set but empty counts as not set
    EXPECT_FALSE(colourOn(true, "1"));
    EXPECT_FALSE(colourOn(false, nullptr));
    EXPECT_FALSE(colourOn(false, ""));
}

TEST(DiagnosticPrinter, PlaceSeverityMessageAndRule) {
    struct Row {
        SourcePlace place;
        Severity severity;
        const char* rule;
        const char* line;
    };
    const Row rows[] = {
        {{"a.def", 3, 7}, Severity::Error, "bad-limit", "a.def:3:7: error: m [bad-limit]\n"},
        {{"a.def", 3, 0}, Severity::Warning, "", "a.def:3: warning: m\n"},
        {{"a.def", 0, 0}, Severity::Note, "", "a.def: note: m\n"},
    };
    for (const Row& row : rows) EXPECT_EQ(formatDiagnostic(row.place, row.severity, "m", row.rule, false), row.line);
    // Colour only adds styles around the same words.
    std::string coloured = formatDiagnostic({"a.def", 3, 7}, Severity::Error, "m", "r", true);
    for (std::size_t escape; (escape = coloured.find('\033')) != std::string::npos;)
        coloured.erase(escape, coloured.find('m', escape) + 1 - escape);
    EXPECT_EQ(coloured, "a.def:3:7: error: m [r]\n");
}

TEST(FileText, ReadsWholeFilesAndSaysWhyNot) {
    const quillet::testing::ScratchDir dir;
    const std::string bytes = std::string(200000, 'x') + std::string("\r\n\0end", 6);
    quillet::testing::writeFile(dir.path() / "f", bytes);
    std::string text = "left over";
    int reason = 0;
    ASSERT_TRUE(readFileText(dir.path() / "f", text, reason));
    EXPECT_EQ(text, bytes);
    EXPECT_FALSE(readFileText(dir.path() / "missing", text, reason));
    EXPECT_EQ(reason, ENOENT);
    EXPECT_FALSE(readFileText(dir.path(), text, reason));
    EXPECT_EQ(reason, EISDIR);
}
