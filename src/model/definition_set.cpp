#include "model/definition_set.h"

#include <algorithm>

namespace quillet {

KeywordDef* DefinitionSet::newKeyword() { return keywordStore_.create(++keywordCounter_, one_); }

OptionDef* DefinitionSet::newOption() { return optionStore_.create(++optionCounter_); }

LookupTableDef* DefinitionSet::newLookupTable(Text name) {
    LookupTableDef* table = tableStore_.create(name);
    lookupTables[table->name] = table;
    tableIndex_[table->name] = table;
    return table;
}

const LookupTableDef* DefinitionSet::findLookupTable(std::string_view name) const {
    auto found = tableIndex_.find(name);
    return found == tableIndex_.end() ? nullptr : found->second;
}

void DefinitionSet::addLookupEntry(LookupTableDef& table, Text entryId, Text entryName, std::int32_t value) {
    table.ids.push_back(entryId);
    table.names.push_back(entryName);
    table.values.push_back(value);
    entryValues_.emplace(entryId, value);
}

bool DefinitionSet::findEntryValueById(std::string_view entryId, std::int32_t& value) const {
    auto found = entryValues_.find(entryId);
    if (found == entryValues_.end()) return false;
    value = found->second;
    return true;
}

void DefinitionSet::sortForDocumentation() {
    auto byName = [](const auto* a, const auto* b) { return a->name < b->name; };
    std::stable_sort(keywords.begin(), keywords.end(), byName);
    for (KeywordDef* keyword : keywords) std::stable_sort(keyword->options.begin(), keyword->options.end(), byName);
}

}  // namespace quillet
