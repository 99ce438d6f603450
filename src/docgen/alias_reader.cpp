#include "docgen/alias_reader.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <locale>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "docgen/path_localize.h"

namespace quillet {

namespace {

using PathBuffer = std::array<char, 1024>;

// Appends as much of `text` as fits, always leaving room for the terminator,
// so an over-long VELLUM_SRC yields a cut path instead of an overrun.
void appendCut(PathBuffer& path, std::string_view text) {
    std::size_t length = std::strlen(path.data());
    std::size_t count = std::min(text.size(), path.size() - 1 - length);
    std::memcpy(path.data() + length, text.data(), count);
    path[length + count] = '\0';
}

// An unset VELLUM_SRC leaves the path empty, so the open fails and the
// message names an empty path.
PathBuffer composeAliasFilePath(const RunContext& context) {
    PathBuffer path{};
    if (context.vellumSrc) {
        appendCut(path, *context.vellumSrc);
        appendCut(path, "/orrery-src/");
        appendCut(path, "data/res/alias.cmd");
        nqfile_path_localize(path.data(), static_cast<int>(path.size()));
    }
    return path;
}

// Word extraction as the file format has always been read: blank-separated
// in the C locale, at most 512 characters, a longer word read as two.
bool readWord(std::istream& in, std::string& word) { return static_cast<bool>(in >> std::setw(512) >> word); }

// The first record of each name in the keyword list's order, which is the
// record an alias's keyword word must find. Records are only appended while
// the file is read, so adding each one keeps the index exact; scanning the
// list per alias instead is quadratic on large definitions.
class FirstRecordByName {
public:
    explicit FirstRecordByName(const std::vector<KeywordDef*>& records) {
        for (KeywordDef* record : records) add(record);
    }
    // The record's name must not change afterwards: the index refers to it.
    void add(KeywordDef* record) { first_.try_emplace(std::string_view(record->name), record); }
    KeywordDef* find(std::string_view name) const {
        auto found = first_.find(name);
        return found == first_.end() ? nullptr : found->second;
    }

private:
    std::unordered_map<std::string_view, KeywordDef*> first_;
};

}  // namespace

bool readAliasFile(DefinitionSet& definitions, const RunContext& context) {
    return readAliasFileAt(definitions, context.report, composeAliasFilePath(context).data());
}

bool readAliasFileAt(DefinitionSet& definitions, const Reporter& report, const char* path) {
    std::ifstream file(path);
    if (!file) {
        report.error("Error opening command aliases file: %s\n", path);
        return false;
    }
    file.imbue(std::locale::classic());

    // Each group is: an ignored word (a comment marker when it starts with
    // '#'), the alias, the keyword. The first and third words share one
    // variable, and failed extractions keep the previous values: a truncated
    // last group still makes an alias from whatever the variables hold.
    FirstRecordByName records(definitions.keywords);
    std::string word;
    std::string aliasName;
    char commentRest[255];
    while (readWord(file, word)) {
        if (word[0] == '#') {
            // A rest of more than 254 characters fails the stream, which
            // ends reading at the next word.
            file.getline(commentRest, sizeof commentRest);
            continue;
        }
        readWord(file, aliasName);
        readWord(file, word);

        KeywordDef* alias = definitions.newKeyword();
        alias->name = definitions.keep(aliasName);
        alias->isAlias = true;
        // Appended before the look-up, so an alias may name itself.
        definitions.keywords.push_back(alias);
        records.add(alias);

        KeywordDef* target = records.find(word);
        if (target == nullptr) {
            report.error("The aliases file contains an unknown command keyword - \n");
            report.standardOutput(" ??? " + word + "\n");
            return false;
        }
        target->aliases.push_back(alias);
        alias->aliases.push_back(target);
    }
    return true;
}

}  // namespace quillet
