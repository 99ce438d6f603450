// quillet reads a formatted definition exactly as it reads the original.
// Generated definitions, some of them broken by a mutation, are laid out at
// random (indentation, separators, words spread over lines, comments, blank
// and trailing blanks, quoted and odd words in texts). For each one the
// formatter accepts, quillet accepts it too, and its three sources, its
// reference with an aliases file and its messages are the same byte for
// byte from the formatted text; formatting that again changes nothing. Each
// one it refuses, quillet refuses or reads otherwise than it looks.
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "format/formatter.h"
#include "quillet/driver.h"
#include "support/definition_generator.h"
#include "support/tool_process.h"

namespace fs = std::filesystem;
using namespace quillet;
using quillet::testing::Lines;
using quillet::testing::ScratchDir;

namespace {

class Scrambler {
public:
    explicit Scrambler(std::mt19937& random) : random_(random) {}

    std::string layOut(const Lines& lines) {
        std::string text = pick(6) == 0 ? "words before any directive\n" : "";
        for (const auto& words : lines) {
            for (int blanks = pick(4) == 0 ? 1 + pick(2) : 0; blanks > 0; --blanks) text += blank() + "\n";
            if (pick(6) == 0) text += blank() + "#" + (pick(2) == 0 ? " a note" : "") + blank() + "\n";
            text += blank();
            for (std::size_t i = 0; i < words.size(); ++i) {
                text += words[i];
                if (words[i].ends_with("DESCRIPTION:") || words[i] == "KEY_SUMMARY:")
                    for (int odd = pick(3); odd > 0; --odd) text += separators() + oddWord();
                if (i + 1 == words.size()) break;
                // Line ends mean nothing between words.
                text += pick(6) == 0 ? blank() + "\n" + blank() : separators();
            }
            if (pick(5) == 0) text += (pick(2) == 0 ? "" : separators()) + "#end of line";
            text += blank() + "\n";
        }
        if (pick(8) == 0 && !text.empty()) text.pop_back();
        return text;
    }

private:
    int pick(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
    std::string blank() {
        static const char* const kBlanks[] = {"", "", " ", "    ", "\t", "  \t ", "        "};
        return kBlanks[pick(7)];
    }
    std::string separators() { return pick(3) == 0 ? "\t " : std::string(1 + pick(3), ' '); }
    std::string oddWord() {
        static const char* const kWords[] = {"\"two  words\"", "a\"b c\"d", "\"\"", "\"# not a comment\"",
                                             "back\\\\slash", "\"tab\tinside\"", "``quoted''", "x\"\"y"};
        return kWords[pick(8)];
    }

    std::mt19937& random_;
};

// Everything one quillet run leaves: status, messages and files by name.
std::map<std::string, std::string> runQuilletOn(const std::string& definition, bool html, const fs::path& dir,
                                                const fs::path& aliasesRoot) {
    fs::remove_all(dir);
    fs::create_directories(dir);
    std::map<std::string, std::string> outputs;
    RunContext context;
    context.outputDir = dir;
    context.vellumSrc = aliasesRoot.string();
    context.report.listen(
        [&](const Reporter::Message& message) { outputs["<messages>"].append(message.text); });
    LineReader input(definition);
    outputs["<status>"] = std::to_string(runQuillet(html ? std::vector<std::string>{"-html"}
                                                         : std::vector<std::string>{},
                                                    input, context));
    for (const auto& entry : fs::directory_iterator(dir))
        outputs[entry.path().filename().string()] = quillet::testing::readFile(entry.path());
    return outputs;
}

// What the formatter refuses besides quillet's errors.
bool readOtherwiseThanItLooks(std::string_view text) {
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string_view line = text.substr(start, end - start);
        if (line.size() > 254 || line.find_first_of(std::string_view("\r\0", 2)) != std::string_view::npos) return true;
        start = end + 1;
    }
    return false;
}

TEST(FormatProperty, FormattedDefinitionMeansTheSame) {
    ScratchDir scratch;
    const fs::path aliasesRoot = scratch.path() / "src";
    quillet::testing::writeFile(aliasesRoot / "orrery-src/data/res/alias.cmd",
                                "alias a0 k0\nalias a1 k1\n# a comment\nalias k1 k0\n");
    std::mt19937 random(20261124);
    Scrambler scrambler(random);
    int accepted = 0;
    int refused = 0;
    for (int round = 0; round < 300; ++round) {
        Lines lines = quillet::testing::generate(random);
        if (round % 2 == 1) quillet::testing::mutate(lines, random);
        const std::string definition = scrambler.layOut(lines);

        std::string formatted;
        std::vector<format::Problem> problems;
        const auto before = runQuilletOn(definition, false, scratch.path() / "before", aliasesRoot);
        if (!format::formatDefinition(definition, formatted, problems)) {
            ++refused;
            ASSERT_FALSE(problems.empty());
            ASSERT_TRUE(before.at("<status>") != "0" || readOtherwiseThanItLooks(definition)) << definition;
            continue;
        }
        ++accepted;
        ASSERT_EQ(before.at("<status>"), "0") << definition;
        ASSERT_EQ(runQuilletOn(formatted, false, scratch.path() / "after", aliasesRoot), before) << definition;
        ASSERT_EQ(runQuilletOn(formatted, true, scratch.path() / "after", aliasesRoot),
                  runQuilletOn(definition, true, scratch.path() / "before", aliasesRoot))
            << definition;
        ASSERT_FALSE(readOtherwiseThanItLooks(formatted)) << formatted;
        std::string again;
        ASSERT_TRUE(format::formatDefinition(formatted, again, problems));
        ASSERT_EQ(again, formatted) << definition;
    }
    // Both sides of the property must have been exercised.
    EXPECT_GT(accepted, 150);
    EXPECT_GT(refused, 40);
}

}  // namespace
