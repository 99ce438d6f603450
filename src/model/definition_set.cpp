#include "model/definition_set.h"

#include <algorithm>

namespace quillet {

KeywordDef* DefinitionSet::newKeyword() { return keywordStore_.create(++keywordCounter); }

OptionDef* DefinitionSet::newOption() { return optionStore_.create(++optionCounter); }

LookupTableDef* DefinitionSet::newLookupTable(const std::string& name) {
    return tableStore_.create(name);
}

const LookupTableDef* DefinitionSet::findLookupTable(std::string_view name) const {
    auto found = lookupTables.find(name);
    return found == lookupTables.end() ? nullptr : found->second;
}

void DefinitionSet::addLookupEntry(LookupTableDef& table, const std::string& entryId, const std::string& entryName,
                                   std::int32_t value) {
    table.addEntry(entryId, entryName, value);
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
