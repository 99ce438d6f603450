#include "model/definition_set.h"

#include <algorithm>

namespace quillet {

KeywordDef* DefinitionSet::newKeyword() { return keywordStore_.create(++keywordCounter_, one_); }

OptionDef* DefinitionSet::newOption() { return optionStore_.create(++optionCounter_); }

LookupTableDef* DefinitionSet::newLookupTable(std::string_view name) {
    LookupTableDef* table = tableStore_.create(keep(name));
    lookupTables[table->name] = table;
    return table;
}

const LookupTableDef* DefinitionSet::findLookupTable(std::string_view name) const {
    auto found = lookupTables.find(name);
    return found == lookupTables.end() ? nullptr : found->second;
}

void DefinitionSet::addLookupEntry(LookupTableDef& table, std::string_view entryId, std::string_view entryName,
                                   std::int32_t value) {
    table.ids.push_back(keep(entryId));
    table.names.push_back(keep(entryName));
    table.values.push_back(value);
    entryValues_.emplace(table.ids.back(), value);
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
