#include "model/definition_set.h"

#include <algorithm>

namespace quillet {

DefinitionSet::DefinitionSet() = default;

KeywordDef* DefinitionSet::newKeyword() { return keywordStore_.create(++keywordCounter); }

OptionDef* DefinitionSet::newOption() { return optionStore_.create(++optionCounter); }

LookupTableDef* DefinitionSet::newLookupTable(const std::string& name) {
    return tableStore_.create(name);
}

const LookupTableDef* DefinitionSet::findLookupTable(std::string_view name) const {
    auto found = lookupTables.find(name);
    return found == lookupTables.end() ? nullptr : found->second;
}

void DefinitionSet::sortForDocumentation() {
    auto byName = [](const auto* a, const auto* b) { return a->name < b->name; };
    std::stable_sort(keywords.begin(), keywords.end(), byName);
    for (KeywordDef* keyword : keywords) std::stable_sort(keyword->options.begin(), keyword->options.end(), byName);
}

}  // namespace quillet
