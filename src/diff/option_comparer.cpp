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

std::string lookupEntry(std::string_view name, std::int32_t value) {
    return std::string(name) + " (" + std::to_string(value) + ")";
}

std::string caseSensitivity(const OptionDef& option) {
    return option.lookupCaseSensitive ? "case-sensitive" : "case-insensitive";
}

}  // namespace

void Comparison::compareOptions(Text name, const KeywordDef& oldCommand, const KeywordDef& newCommand,
                                bool sameKeyword) {
    for (const OptionPair& pair : pairByName(oldCommand.options, newCommand.options)) {
        if (pair.newOption == nullptr) {
            optionChange(Rule::OPTION_REMOVED, name, pair.oldOption, nullptr);
        } else if (pair.oldOption == nullptr) {
            optionChange(Rule::OPTION_ADDED, name, nullptr, pair.newOption);
        } else {
            if (sameKeyword) compareOptionTexts(name, *pair.oldOption, *pair.newOption);
            compareOption(name, *pair.oldOption, *pair.newOption);
        }
        closeGroup();
    }
}

// The ID and the description belong to one keyword's option: a name that
// now runs another command has the other command's, and says so already.
void Comparison::compareOptionTexts(Text keyword, const OptionDef& oldOption, const OptionDef& newOption) {
    if (oldOption.id != newOption.id)
        optionChange(Rule::OPTION_ID_CHANGED, keyword, &oldOption, &newOption, oldOption.id, newOption.id);
    if (oldOption.description != newOption.description)
        optionChange(Rule::OPTION_DESCRIPTION_CHANGED, keyword, &oldOption, &newOption,
                     keepQuoted(oldOption.description), keepQuoted(newOption.description));
}

// What a script may give the option and what an omitted one stands for.
// Once the type changed, defaults, limits and lookup names are values of
// different kinds; the type change says it all.
void Comparison::compareOption(Text keyword, const OptionDef& oldOption, const OptionDef& newOption) {
    if (oldOption.readOnly != newOption.readOnly)
        optionChange(flagRule(directiveRow(Directive::OPT_READONLY), newOption.readOnly), keyword,
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
            optionChange(flagRule(directiveRow(Directive::OPT_LOOKUP_CASE_SENSITIVE), newOption.lookupCaseSensitive),
                         keyword, &oldOption, &newOption, keep(caseSensitivity(oldOption)),
                         keep(caseSensitivity(newOption)));
    }
}

// A limit added, a minimum raised or a maximum lowered refuses values that
// were accepted; limits named by lookup entry ID count by their values.
void Comparison::compareLimit(Text keyword, const OptionDef& oldOption, const OptionDef& newOption,
                              Limit limit) {
    if (sameLimitText(oldOption, newOption, limit)) return;
    const LimitValue before = limits_.read(old_, oldOption, limit);
    const LimitValue after = limits_.read(new_, newOption, limit);
    if (before.value == after.value) return;
    bool narrowed = !before.value;
    if (before.value && after.value)
        narrowed = limit == Limit::Minimum ? *after.value > *before.value : *after.value < *before.value;
    optionChange(narrowed ? Rule::LIMIT_NARROWED : Rule::LIMIT_WIDENED, keyword, &oldOption, &newOption,
                 keep(shownLimit(oldOption, limit, before)), keep(shownLimit(newOption, limit, after)));
}

// Most limits stand unchanged; the same text reads as the same value unless
// it names a lookup entry whose value changed.
bool Comparison::sameLimitText(const OptionDef& oldOption, const OptionDef& newOption, Limit limit) const {
    const bool minimum = limit == Limit::Minimum;
    if ((minimum ? oldOption.hasMinimum : oldOption.hasMaximum) !=
        (minimum ? newOption.hasMinimum : newOption.hasMaximum))
        return false;
    const Text text = minimum ? oldOption.minimumText : oldOption.maximumText;
    if (text != (minimum ? newOption.minimumText : newOption.maximumText)) return false;
    std::int32_t before = 0;
    std::int32_t after = 0;
    const bool oldEntry = old_.findEntryValueById(text, before);
    const bool newEntry = new_.findEntryValueById(text, after);
    return oldEntry == newEntry && before == after;
}

// The names a script may give for the option's value: those of its lookup
// table, whichever table that is.
void Comparison::compareLookupNames(Text keyword, const OptionDef& oldOption,
                                    const OptionDef& newOption) {
    const LookupTableDef* oldTable = lookupTableOf(old_, oldOption);
    const LookupTableDef* newTable = lookupTableOf(new_, newOption);
    if (sameEntries(oldTable, newTable)) return;
    const Entries& before = entriesOf(oldTable, oldEntries_);
    const Entries& after = entriesOf(newTable, newEntries_);
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < before.size() || j < after.size()) {
        if (j == after.size() || (i < before.size() && before[i].name < after[j].name)) {
            optionChange(Rule::LOOKUP_NAME_REMOVED, keyword, &oldOption, &newOption,
                         keep(lookupEntry(before[i].name, before[i].value)), {});
            ++i;
        } else if (i == before.size() || after[j].name < before[i].name) {
            optionChange(Rule::LOOKUP_NAME_ADDED, keyword, &oldOption, &newOption, {},
                         keep(lookupEntry(after[j].name, after[j].value)));
            ++j;
        } else {
            if (before[i].value != after[j].value)
                optionChange(Rule::LOOKUP_VALUE_CHANGED, keyword, &oldOption, &newOption,
                             keep(lookupEntry(before[i].name, before[i].value)),
                             keep(lookupEntry(after[j].name, after[j].value)));
            ++i;
            ++j;
        }
    }
}

const Comparison::Entries& Comparison::entriesOf(const LookupTableDef* table, EntriesByTable& made) {
    auto [entries, isNew] = made.try_emplace(table);
    if (!isNew || table == nullptr) return entries->second;
    Entries& sorted = entries->second;
    for (std::size_t i = 0; i < table->size(); ++i) sorted.push_back({table->names[i], table->values[i]});
    std::stable_sort(sorted.begin(), sorted.end(), [](const Entry& a, const Entry& b) { return a.name < b.name; });
    sorted.erase(std::unique(sorted.begin(), sorted.end(), [](const Entry& a, const Entry& b) { return a.name == b.name; }),
                 sorted.end());
    return sorted;
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
