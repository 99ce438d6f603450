// Options of a keyword both definitions have: what a script may give each
// option, and what an omitted one stands for.
#include <algorithm>
#include <cstdint>
#include <unordered_map>

#include "diff/comparison.h"

namespace quillet::diff {

namespace {

// One option name of a keyword and its record on each side.
struct OptionPair {
    Text name;
    const OptionDef* oldOption;
    const OptionDef* newOption;
};

// Both sides' options in name order, each name once; names are unique
// within a keyword.
std::vector<OptionPair> pairByName(const std::vector<OptionDef*>& oldOptions,
                                   const std::vector<OptionDef*>& newOptions) {
    std::vector<OptionPair> records;
    records.reserve(oldOptions.size() + newOptions.size());
    for (const OptionDef* option : oldOptions) records.push_back({option->name, option, nullptr});
    for (const OptionDef* option : newOptions) records.push_back({option->name, nullptr, option});
    std::sort(records.begin(), records.end(), [](const OptionPair& a, const OptionPair& b) {
        return a.name < b.name || (a.name == b.name && a.oldOption != nullptr && b.oldOption == nullptr);
    });
    std::vector<OptionPair> pairs;
    pairs.reserve(records.size());
    for (const OptionPair& record : records) {
        if (!pairs.empty() && pairs.back().name == record.name) pairs.back().newOption = record.newOption;
        else pairs.push_back(record);
    }
    return pairs;
}

const LookupTableDef* lookupTableOf(const DefinitionSet& definitions, const OptionDef& option) {
    return option.hasLookupTable ? definitions.findLookupTable(option.lookupTableName) : nullptr;
}

bool sameEntries(const LookupTableDef* a, const LookupTableDef* b) {
    const std::size_t sizeA = a != nullptr ? a->size() : 0;
    const std::size_t sizeB = b != nullptr ? b->size() : 0;
    if (sizeA == 0 || sizeB == 0) return sizeA == sizeB;
    return a->names == b->names && a->values == b->values;
}

// A name given twice in a table stands for its first value, as a symbolic
// default resolves it.
std::unordered_map<std::string_view, std::int32_t> valuesByName(const LookupTableDef* table) {
    std::unordered_map<std::string_view, std::int32_t> values;
    if (table == nullptr) return values;
    values.reserve(table->size());
    for (std::size_t i = 0; i < table->size(); ++i) values.emplace(table->names[i], table->values[i]);
    return values;
}

std::string lookupEntry(std::string_view name, std::int32_t value) {
    return std::string(name) + " (" + std::to_string(value) + ")";
}

std::string caseSensitivity(const OptionDef& option) {
    return option.lookupCaseSensitive ? "case-sensitive" : "case-insensitive";
}

}  // namespace

void Comparison::compareOptions(const KeywordDef& oldKeyword, const KeywordDef& newKeyword) {
    for (const OptionPair& pair : pairByName(oldKeyword.options, newKeyword.options)) {
        if (pair.newOption == nullptr) optionChange(Rule::OPTION_REMOVED, oldKeyword.name, pair.oldOption, nullptr);
        else if (pair.oldOption == nullptr) optionChange(Rule::OPTION_ADDED, newKeyword.name, nullptr, pair.newOption);
        else compareOption(oldKeyword.name, *pair.oldOption, *pair.newOption);
        closeGroup();
    }
}

// Once the type changed, defaults, limits and lookup names are values of
// different kinds; the type change says it all.
void Comparison::compareOption(Text keyword, const OptionDef& oldOption, const OptionDef& newOption) {
    if (oldOption.id != newOption.id)
        optionChange(Rule::OPTION_ID_CHANGED, keyword, &oldOption, &newOption, oldOption.id, newOption.id);
    if (oldOption.description != newOption.description)
        optionChange(Rule::OPTION_DESCRIPTION_CHANGED, keyword, &oldOption, &newOption,
                     keep(quotedText(oldOption.description)), keep(quotedText(newOption.description)));
    if (oldOption.readOnly != newOption.readOnly)
        optionChange(newOption.readOnly ? Rule::OPTION_MADE_READ_ONLY : Rule::OPTION_MADE_WRITABLE, keyword,
                     &oldOption, &newOption);
    if (oldOption.type != newOption.type) {
        optionChange(Rule::OPTION_TYPE_CHANGED, keyword, &oldOption, &newOption, keep(typeWord(oldOption.type)),
                     keep(typeWord(newOption.type)));
        return;
    }
    if (!sameDefault(oldOption, newOption))
        optionChange(Rule::DEFAULT_CHANGED, keyword, &oldOption, &newOption, keep(shownDefault(oldOption)),
                     keep(shownDefault(newOption)));
    if (oldOption.type == OptionType::NQ_INT_TYPE || oldOption.type == OptionType::NQ_DOUBLE_TYPE) {
        compareLimit(keyword, oldOption, newOption, Limit::Minimum);
        compareLimit(keyword, oldOption, newOption, Limit::Maximum);
    }
    if (oldOption.type == OptionType::NQ_INT_TYPE) {
        compareLookupNames(keyword, oldOption, newOption);
        if (oldOption.lookupCaseSensitive != newOption.lookupCaseSensitive)
            optionChange(Rule::LOOKUP_CASE_SENSITIVITY_CHANGED, keyword, &oldOption, &newOption,
                         keep(caseSensitivity(oldOption)), keep(caseSensitivity(newOption)));
    }
}

// A limit added, a minimum raised or a maximum lowered refuses values that
// were accepted; limits named by lookup entry ID count by their values.
void Comparison::compareLimit(Text keyword, const OptionDef& oldOption, const OptionDef& newOption,
                              Limit limit) {
    LimitValue before = limits_.read(old_, oldOption, limit);
    LimitValue after = limits_.read(new_, newOption, limit);
    if (before.value == after.value) return;
    bool narrowed = !before.value;
    if (before.value && after.value)
        narrowed = limit == Limit::Minimum ? *after.value > *before.value : *after.value < *before.value;
    optionChange(narrowed ? Rule::LIMIT_NARROWED : Rule::LIMIT_WIDENED, keyword, &oldOption, &newOption,
                 keep(before.shown), keep(after.shown));
}

// The names a script may give for the option's value: those of its lookup
// table, whichever table that is.
void Comparison::compareLookupNames(Text keyword, const OptionDef& oldOption,
                                    const OptionDef& newOption) {
    const LookupTableDef* oldTable = lookupTableOf(old_, oldOption);
    const LookupTableDef* newTable = lookupTableOf(new_, newOption);
    if (sameEntries(oldTable, newTable)) return;
    const auto oldValues = valuesByName(oldTable);
    const auto newValues = valuesByName(newTable);
    for (const auto& [name, value] : oldValues) {
        auto found = newValues.find(name);
        if (found == newValues.end())
            optionChange(Rule::LOOKUP_NAME_REMOVED, keyword, &oldOption, &newOption, keep(lookupEntry(name, value)),
                         {});
        else if (found->second != value)
            optionChange(Rule::LOOKUP_VALUE_CHANGED, keyword, &oldOption, &newOption, keep(lookupEntry(name, value)),
                         keep(lookupEntry(name, found->second)));
    }
    for (const auto& [name, value] : newValues)
        if (oldValues.find(name) == oldValues.end())
            optionChange(Rule::LOOKUP_NAME_ADDED, keyword, &oldOption, &newOption, {}, keep(lookupEntry(name, value)));
}

void Comparison::optionChange(Rule rule, Text keyword, const OptionDef* oldOption,
                              const OptionDef* newOption, Value oldValue, Value newValue) {
    Change& change = changes_.emplace_back(Change{.rule = rule, .keyword = keyword});
    change.option = (oldOption != nullptr ? oldOption : newOption)->name;
    change.oldValue = oldValue;
    change.newValue = newValue;
    if (oldOption != nullptr) change.oldLine = oldOption->lineNumber;
    if (newOption != nullptr) change.newLine = newOption->lineNumber;
}

}  // namespace quillet::diff
