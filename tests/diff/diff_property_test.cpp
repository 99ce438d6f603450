// Properties of the comparer on generated pairs of related definitions: a
// definition compared with itself shows no change, and comparing the pair
// the other way round turns every change into its inverse (an addition into
// a removal, a narrowed limit into a widened one, a keyword made alias into
// an alias made keyword with the options it lost gained back, old and new
// swapped).
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "diff/comparer.h"
#include "language/directive.h"
#include "diff/definition_loader.h"

namespace fs = std::filesystem;
using namespace quillet;
using namespace quillet::diff;

namespace {

// Draws every decision from a sequence both sides share and, now and then,
// from one of the side's own, so the two definitions are related but differ.
class Dice {
public:
    Dice(unsigned seed, unsigned side) : shared_(seed), own_(seed * 2 + side + 1) {}
    int roll(int faces) {
        const int shared = static_cast<int>(shared_() % static_cast<unsigned>(faces));
        const int own = static_cast<int>(own_() % static_cast<unsigned>(faces));
        return own_() % 6 == 0 ? own : shared;
    }

private:
    std::mt19937 shared_;
    std::mt19937 own_;
};

constexpr int kTables = 3;
constexpr int kKeywords = 8;

void writeOption(std::ostream& out, Dice& dice, int keyword, int option) {
    static const char* const kTypes[] = {"NQ_INT_TYPE", "NQ_DOUBLE_TYPE", "NQ_BOOL_TYPE", "NQ_STRING_TYPE"};
    const int type = dice.roll(4);
    const int value = dice.roll(3);
    out << "    OPTION: o" << option << " O" << keyword << '_' << option << '_' << dice.roll(2) << ' ' << kTypes[type];
    switch (type) {
    case 2: out << (value == 0 ? " off\n" : " true\n"); break;
    case 3: out << " \"s " << value << "\"\n"; break;
    default: out << ' ' << value << (type == 1 ? ".5\n" : "\n");
    }
    const bool lookup = type == 0 && dice.roll(2) == 0;
    if (lookup) {
        out << "    OPT_LOOKUP: T" << dice.roll(kTables) << '\n';
        if (dice.roll(2) == 0) out << "    OPT_LOOKUP_CASE_SENSITIVE:\n";
    } else if (type < 2) {
        if (dice.roll(2) == 0) out << "    OPT_MINIMUM: " << value - dice.roll(3) << '\n';
        if (dice.roll(2) == 0) out << "    OPT_MAXIMUM: " << value + 1 + dice.roll(3) << '\n';
    }
    if (dice.roll(3) == 0) out << "    OPT_DESCRIPTION: d" << dice.roll(2) << '\n';
    if (dice.roll(4) == 0) out << "    OPT_READONLY:\n";
}

// A definition and its aliases file, both valid for quillet.
std::pair<std::string, std::string> generate(unsigned seed, unsigned side) {
    Dice dice(seed, side);
    std::ostringstream out;
    for (int table = 0; table < kTables; ++table) {
        out << "LOOKUP: T" << table << '\n';
        for (int entry = 0; entry < 4; ++entry)
            if (dice.roll(4) != 0) out << "    T" << table << "_E" << entry << " n" << entry << ' ' << dice.roll(5) << '\n';
    }
    std::vector<int> present;
    for (int keyword = 0; keyword < kKeywords; ++keyword) {
        if (dice.roll(6) == 0) continue;
        present.push_back(keyword);
        out << "KEYWORD: k" << keyword << " K" << keyword << '_' << dice.roll(2) << '\n';
        // Every keyword flag of the language, each after the flag it needs
        // (which the table lists earlier); a once-per-file flag on its own keyword.
        std::vector<bool KeywordDef::*> given;
        int oncePerFile = 0;
        for (const DirectiveSpec& row : kDirectives) {
            if (row.keywordFlag == nullptr) continue;
            const bool allowed = row.secondUseRefusal != nullptr ? keyword == oncePerFile++
                                                                 : row.keywordPrerequisite == nullptr ||
                                                                       std::ranges::find(given, row.keywordPrerequisite) != given.end();
            if (!allowed || dice.roll(row.secondUseRefusal != nullptr ? 2 : 3) != 0) continue;
            given.push_back(row.keywordFlag);
            out << row.word;
            if (row.arguments == Arguments::ModelName) out << ' ' << 1 + dice.roll(2);
            out << '\n';
        }
        out << "KEY_SUMMARY: s" << dice.roll(2) << "\nKEY_DESCRIPTION: d" << dice.roll(2)
            << "\nKEY_OPERAND_SYNOPSIS: s" << dice.roll(2) << "\nKEY_OPERAND_DESCRIPTION: o" << dice.roll(2) << '\n';
        for (int option = 0; option < 4; ++option)
            if (dice.roll(5) != 0) writeOption(out, dice, keyword, option);
    }
    std::ostringstream aliases;
    for (int alias = 0; alias < 4 && !present.empty(); ++alias)
        if (dice.roll(3) != 0)
            aliases << "alias " << (dice.roll(4) == 0 ? "k" : "a") << alias << " k"
                    << present[static_cast<std::size_t>(dice.roll(static_cast<int>(present.size())))] << '\n';
    return {out.str(), aliases.str()};
}

// Written to files, as quillet reads the aliases file from one.
void load(const fs::path& dir, unsigned seed, unsigned side, DefinitionSet& definitions) {
    const auto [definition, aliases] = generate(seed, side);
    const fs::path base = dir / std::to_string(side);
    std::ofstream(base.string() + ".def") << definition;
    std::ofstream(base.string() + ".cmd") << aliases;
    std::optional<Diagnostic> problem = loadDefinition(base.string() + ".def", definitions);
    if (!problem) problem = loadAliases(base.string() + ".cmd", definitions);
    ASSERT_FALSE(problem) << problem->line << ':' << problem->column << ' ' << problem->message << '\n' << definition;
}

std::string inverseName(const std::string& name) {
    static const std::map<std::string, std::string> kPairs = {
        {"KEYWORD_MADE_ALIAS", "ALIAS_MADE_KEYWORD"}, {"ALIAS_MADE_KEYWORD", "KEYWORD_MADE_ALIAS"},
        {"OPTION_MADE_READ_ONLY", "OPTION_MADE_WRITABLE"}, {"OPTION_MADE_WRITABLE", "OPTION_MADE_READ_ONLY"},
        {"KEYWORD_DEPRECATED", "KEYWORD_UNDEPRECATED"}, {"KEYWORD_UNDEPRECATED", "KEYWORD_DEPRECATED"},
        {"LIMIT_NARROWED", "LIMIT_WIDENED"}, {"LIMIT_WIDENED", "LIMIT_NARROWED"}};
    if (auto pair = kPairs.find(name); pair != kPairs.end()) return pair->second;
    if (name.ends_with("_ADDED")) return name.substr(0, name.size() - 6) + "_REMOVED";
    if (name.ends_with("_REMOVED")) return name.substr(0, name.size() - 8) + "_ADDED";
    return name;
}

using Key = std::tuple<std::string, std::string, std::string, std::string, std::string, int, int>;

std::string text(const std::optional<Text>& value) { return value ? "=" + std::string(value->view()) : "none"; }

Key keyOf(const Change& change, bool inverted) {
    const std::string name(ruleInfo(change.rule).name);
    const std::string option = text(change.option);
    if (!inverted)
        return {name, std::string(change.keyword.view()), option, text(change.oldValue), text(change.newValue),
                change.oldLine.value_or(0), change.newLine.value_or(0)};
    return {inverseName(name), std::string(change.keyword.view()), option, text(change.newValue),
            text(change.oldValue), change.newLine.value_or(0), change.oldLine.value_or(0)};
}

std::multiset<Key> keysOf(const ChangeList& changes, bool inverted) {
    std::multiset<Key> keys;
    for (const Change& change : changes) keys.insert(keyOf(change, inverted));
    return keys;
}

// The rules under which a word runs another command than before, once some
// option of that word changed with it. A keyword-named alias may stand beside
// a keyword of its name, whose own options count then.
void noteRetargets(const ChangeList& changes, std::set<std::string>& seen) {
    std::map<std::string, std::string> retargeted;
    for (const Change& change : changes) {
        const std::string rule(ruleInfo(change.rule).name);
        const bool aliasOnly = change.keyword.view().starts_with("a");
        if (rule == "KEYWORD_MADE_ALIAS" || rule == "ALIAS_MADE_KEYWORD" ||
            (rule == "ALIAS_TARGET_CHANGED" && aliasOnly))
            retargeted[std::string(change.keyword.view())] = rule;
    }
    for (const Change& change : changes)
        if (auto word = retargeted.find(std::string(change.keyword.view())); change.option && word != retargeted.end())
            seen.insert(word->second);
}

TEST(DiffProperty, SelfComparisonIsEmptyAndSwappingInvertsEveryChange) {
    const fs::path dir = fs::temp_directory_path() / ("quillet-diff-property-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    std::set<std::string> rulesSeen;
    std::set<std::string> retargetsSeen;
    for (unsigned seed = 1; seed <= 200; ++seed) {
        DefinitionSet a;
        DefinitionSet b;
        load(dir, seed, 0, a);
        load(dir, seed, 1, b);
        if (::testing::Test::HasFatalFailure()) break;
        TextArena values;
        EXPECT_TRUE(compareDefinitions(a, a, values).empty()) << "seed " << seed;
        EXPECT_TRUE(compareDefinitions(b, b, values).empty()) << "seed " << seed;
        const ChangeList forward = compareDefinitions(a, b, values);
        EXPECT_EQ(keysOf(forward, false), keysOf(compareDefinitions(b, a, values), true)) << "seed " << seed;
        for (const Change& change : forward) rulesSeen.insert(std::string(ruleInfo(change.rule).name));
        noteRetargets(forward, retargetsSeen);
    }
    fs::remove_all(dir);
    // Otherwise the properties might hold for want of changes.
    EXPECT_EQ(rulesSeen.size(), kRules.size());
    EXPECT_EQ(retargetsSeen.size(), 3u);
}

}  // namespace
