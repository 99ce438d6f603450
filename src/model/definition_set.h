#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/keyword_def.h"
#include "model/lookup_table_def.h"
#include "model/option_def.h"
#include "model/option_type.h"
#include "model/record_store.h"
#include "model/text.h"
#include "model/text_registry.h"

namespace quillet {

// The definition one run has read: the records and their texts (owned here,
// never freed before the run ends), the lookup tables, the keyword list and
// the serial counters. The writers read it through const&.
class DefinitionSet {
public:
    DefinitionSet() = default;
    DefinitionSet(const DefinitionSet&) = delete;
    DefinitionSet& operator=(const DefinitionSet&) = delete;

    // Every construction draws the next serial number, spare records included.
    KeywordDef* newKeyword();
    OptionDef* newOption();
    // Creates the table and enters it under its name.
    LookupTableDef* newLookupTable(Text name);

    // A copy of `text` that lives as long as the model.
    Text keep(std::string_view text) { return texts_.keep(text); }

    // The table of that name, or null; never creates one.
    const LookupTableDef* findLookupTable(std::string_view name) const;
    // Every table findLookupTable() finds, by name.
    std::vector<const LookupTableDef*> tablesByName() const;
    // For a part of a file read again alone: the tables of `earlier` (the
    // file's whole reading) whose names `ids` registered on a line before
    // `line` are found here too, with their entries' IDs.
    void lookBehind(const DefinitionSet& earlier, const TextRegistry& ids, int line) {
        earlier_ = &earlier;
        earlierIds_ = &ids;
        earlierLine_ = line;
    }

    // Appends an entry to `table` and indexes its ID. Entry IDs are unique
    // across all tables, so the index finds the same entry as a search of the
    // tables in name order would, without scanning them for every limit that
    // names an entry.
    void addLookupEntry(LookupTableDef& table, Text entryId, Text entryName, std::int32_t value);
    bool findEntryValueById(std::string_view entryId, std::int32_t& value) const;

    // Destroys the keyword and option records and empties `keywords`; the
    // texts and the lookup tables stay. For a reading kept only for what
    // later readings of its parts look up: its names and its tables.
    void forgetKeywords();

    // Byte-wise stable sorts used by the documentation path: the records by
    // name, then each record's options by name.
    void sortForDocumentation();

    std::map<std::string_view, LookupTableDef*, std::less<>> lookupTables;  // by name
    std::vector<KeywordDef*> keywords;  // closed keywords in definition order, then aliases

private:
    TextArena texts_;
    // The tables again, hashed: every option with a table looks its table up
    // by name, and ten thousand tables make a deep tree of string compares.
    std::unordered_map<std::string_view, LookupTableDef*> tableIndex_;
    std::unordered_map<std::string_view, std::int32_t> entryValues_;
    RecordStore<KeywordDef> keywordStore_;
    RecordStore<OptionDef> optionStore_;
    RecordStore<LookupTableDef> tableStore_;
    bool earlierHas(std::string_view id) const;
    const DefinitionSet* earlier_ = nullptr;
    const TextRegistry* earlierIds_ = nullptr;
    int earlierLine_ = 0;
    int keywordCounter_ = 0;
    int optionCounter_ = 0;
    Text one_ = texts_.keep("1");
};

}  // namespace quillet
