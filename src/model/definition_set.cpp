#include "model/definition_set.h"

#include <algorithm>

namespace quillet {

KeywordDef* DefinitionSet::newKeyword() { return keywordStore_.create(++keywordCounter_, one_); }

OptionDef* DefinitionSet::newOption() { return optionStore_.create(++optionCounter_); }

void DefinitionSet::forgetKeywords() {
    keywords.clear();
    keywords.shrink_to_fit();
    keywordStore_.clear();
    optionStore_.clear();
}

LookupTableDef* DefinitionSet::newLookupTable(Text name) {
    LookupTableDef* table = tableStore_.create(name);
    lookupTables[table->name] = table;
    tableIndex_[table->name] = table;
    return table;
}

const LookupTableDef* DefinitionSet::findLookupTable(std::string_view name) const {
    auto found = tableIndex_.find(name);
    if (found != tableIndex_.end()) return found->second;
    return earlier_ != nullptr && earlierHas(name) ? earlier_->findLookupTable(name) : nullptr;
}

std::vector<const LookupTableDef*> DefinitionSet::tablesByName() const {
    std::vector<const LookupTableDef*> tables;
    for (const auto& [name, table] : lookupTables) tables.push_back(table);
    if (earlier_ == nullptr) return tables;
    for (const auto& [name, table] : earlier_->lookupTables)
        if (earlierHas(name) && !lookupTables.contains(name)) tables.push_back(table);
    std::stable_sort(tables.begin(), tables.end(), [](const LookupTableDef* a, const LookupTableDef* b) {
        return a->name.view() < b->name.view();
    });
    return tables;
}

bool DefinitionSet::earlierHas(std::string_view id) const {
    const std::optional<Position> place = earlierIds_->placeOf(id);
    return place && place->line < earlierLine_;
}

void DefinitionSet::addLookupEntry(LookupTableDef& table, Text entryId, Text entryName, std::int32_t value) {
    table.ids.push_back(entryId);
    table.names.push_back(entryName);
    table.values.push_back(value);
    entryValues_.emplace(entryId, value);
}

bool DefinitionSet::findEntryValueById(std::string_view entryId, std::int32_t& value) const {
    auto found = entryValues_.find(entryId);
    if (found == entryValues_.end())
        return earlier_ != nullptr && earlierHas(entryId) && earlier_->findEntryValueById(entryId, value);
    value = found->second;
    return true;
}

void DefinitionSet::sortForDocumentation() {
    auto byName = [](const auto* a, const auto* b) { return a->name < b->name; };
    std::stable_sort(keywords.begin(), keywords.end(), byName);
    for (KeywordDef* keyword : keywords) std::stable_sort(keyword->options.begin(), keyword->options.end(), byName);
}

}  // namespace quillet
