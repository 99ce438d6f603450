#pragma once

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
#include "model/text_registry.h"

namespace quillet {

// Lets the tables keyed by text be searched with a string_view without
// building a string.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};

// Everything one run reads and builds: the records (owned here, never freed
// before the run ends), the registries that keep names unique, the reader's
// state and the serial counters.
class DefinitionSet {
public:
    DefinitionSet() = default;
    DefinitionSet(const DefinitionSet&) = delete;
    DefinitionSet& operator=(const DefinitionSet&) = delete;

    // Every construction draws the next serial number, spare records included.
    KeywordDef* newKeyword();
    OptionDef* newOption();
    LookupTableDef* newLookupTable(const std::string& name);

    // The table of that name, or null; never creates one.
    const LookupTableDef* findLookupTable(std::string_view name) const;

    // Appends an entry to `table` and indexes its ID. Entry IDs are unique
    // across all tables (they share the ID registry), so the index finds
    // the same entry as a search of the tables in name order would, without
    // scanning them for every limit that names an entry.
    void addLookupEntry(LookupTableDef& table, const std::string& entryId, const std::string& entryName,
                        std::int32_t value);
    bool findEntryValueById(std::string_view entryId, std::int32_t& value) const;

    // Byte-wise stable sorts used by the documentation path: the records by
    // name, then each record's options by name.
    void sortForDocumentation();

    std::unordered_map<std::string, int, TextHash, std::equal_to<>> directiveTable;
    std::unordered_map<std::string, OptionType, TextHash, std::equal_to<>> typeNames;

    TextRegistry keywordNames;
    TextRegistry optionNames;  // of the current keyword only
    TextRegistry idNames;      // keyword IDs, option IDs, table names and entry IDs alike
    std::map<std::string, LookupTableDef*, std::less<>> lookupTables;
    std::vector<KeywordDef*> keywords;

    std::string pendingEntryName;
    std::string pendingEntryId;
    KeywordDef* currentKeyword = nullptr;
    OptionDef* currentOption = nullptr;
    LookupTableDef* currentLookupTable = nullptr;
    int mode = -1;
    bool deleteKeywordSeen = false;
    bool renameKeywordSeen = false;
    int keywordArgCount = 0;
    int optionArgCount = 0;
    int optLookupArgCount = 0;
    int modelNameArgCount = 0;
    int minimumArgCount = 0;
    int maximumArgCount = 0;
    int lookupArgCount = 0;
    bool lookupTableStarted = false;

    int keywordCounter = 0;
    int optionCounter = 0;

private:
    std::unordered_map<std::string, std::int32_t, TextHash, std::equal_to<>> entryValues_;
    RecordStore<KeywordDef> keywordStore_;
    RecordStore<OptionDef> optionStore_;
    RecordStore<LookupTableDef> tableStore_;
};

}  // namespace quillet
