// Options of a keyword both definitions have: what a script may give each
// option, and what an omitted one stands for.
#include <cstdint>

#include "diff/comparison.h"

namespace quillet::diff {

namespace {

using OptionsByName = std::unordered_map<std::string_view, const OptionDef*>;

OptionsByName byName(const std::vector<OptionDef*>& options) {
    OptionsByName names;
    names.reserve(options.size());
    for (const OptionDef* option : options) names.emplace(option->name, option);
    return names;
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
    const OptionsByName oldOptions = byName(oldKeyword.options);
    const OptionsByName newOptions = byName(newKeyword.options);
    for (const OptionDef* oldOption : oldKeyword.options) {
        auto found = newOptions.find(oldOption->name);
        if (found == newOptions.end()) optionChange(Rule::OPTION_REMOVED, oldKeyword.name, oldOption, nullptr);
        else compareOption(oldKeyword.name, *oldOption, *found->second);
    }
    for (const OptionDef* newOption : newKeyword.options)
        if (oldOptions.find(newOption->name) == oldOptions.end())
            optionChange(Rule::OPTION_ADDED, newKeyword.name, nullptr, newOption);
}

// Once the type changed, defaults, limits and lookup names are values of
// different kinds; the type change says it all.
void Comparison::compareOption(std::string_view keyword, const OptionDef& oldOption, const OptionDef& newOption) {
    if (oldOption.id != newOption.id)
        optionChange(Rule::OPTION_ID_CHANGED, keyword, &oldOption, &newOption, std::string(oldOption.id.view()),
                     std::string(newOption.id.view()));
    if (oldOption.description != newOption.description)
        optionChange(Rule::OPTION_DESCRIPTION_CHANGED, keyword, &oldOption, &newOption,
                     quotedText(oldOption.description), quotedText(newOption.description));
    if (oldOption.readOnly != newOption.readOnly)
        optionChange(newOption.readOnly ? Rule::OPTION_MADE_READ_ONLY : Rule::OPTION_MADE_WRITABLE, keyword,
                     &oldOption, &newOption);
    if (oldOption.type != newOption.type) {
        optionChange(Rule::OPTION_TYPE_CHANGED, keyword, &oldOption, &newOption, typeWord(oldOption.type),
                     typeWord(newOption.type));
        return;
    }
    if (!sameDefault(oldOption, newOption))
        optionChange(Rule::DEFAULT_CHANGED, keyword, &oldOption, &newOption, shownDefault(oldOption),
                     shownDefault(newOption));
    if (oldOption.type == OptionType::NQ_INT_TYPE || oldOption.type == OptionType::NQ_DOUBLE_TYPE) {
        compareLimit(keyword, oldOption, newOption, Limit::Minimum);
        compareLimit(keyword, oldOption, newOption, Limit::Maximum);
    }
    if (oldOption.type == OptionType::NQ_INT_TYPE) {
        compareLookupNames(keyword, oldOption, newOption);
        if (oldOption.lookupCaseSensitive != newOption.lookupCaseSensitive)
            optionChange(Rule::LOOKUP_CASE_SENSITIVITY_CHANGED, keyword, &oldOption, &newOption,
                         caseSensitivity(oldOption), caseSensitivity(newOption));
    }
}

// A limit added, a minimum raised or a maximum lowered refuses values that
// were accepted; limits named by lookup entry ID count by their values.
void Comparison::compareLimit(std::string_view keyword, const OptionDef& oldOption, const OptionDef& newOption,
                              Limit limit) {
    LimitValue before = limits_.read(old_, oldOption, limit);
    LimitValue after = limits_.read(new_, newOption, limit);
    if (before.value == after.value) return;
    bool narrowed = !before.value;
    if (before.value && after.value)
        narrowed = limit == Limit::Minimum ? *after.value > *before.value : *after.value < *before.value;
    optionChange(narrowed ? Rule::LIMIT_NARROWED : Rule::LIMIT_WIDENED, keyword, &oldOption, &newOption,
                 std::move(before.shown), std::move(after.shown));
}

// The names a script may give for the option's value: those of its lookup
// table, whichever table that is.
void Comparison::compareLookupNames(std::string_view keyword, const OptionDef& oldOption,
                                    const OptionDef& newOption) {
    const LookupTableDef* oldTable = lookupTableOf(old_, oldOption);
    const LookupTableDef* newTable = lookupTableOf(new_, newOption);
    if (sameEntries(oldTable, newTable)) return;
    const auto oldValues = valuesByName(oldTable);
    const auto newValues = valuesByName(newTable);
    for (const auto& [name, value] : oldValues) {
        auto found = newValues.find(name);
        if (found == newValues.end())
            optionChange(Rule::LOOKUP_NAME_REMOVED, keyword, &oldOption, &newOption, lookupEntry(name, value), {});
        else if (found->second != value)
            optionChange(Rule::LOOKUP_VALUE_CHANGED, keyword, &oldOption, &newOption, lookupEntry(name, value),
                         lookupEntry(name, found->second));
    }
    for (const auto& [name, value] : newValues)
        if (oldValues.find(name) == oldValues.end())
            optionChange(Rule::LOOKUP_NAME_ADDED, keyword, &oldOption, &newOption, {}, lookupEntry(name, value));
}

void Comparison::optionChange(Rule rule, std::string_view keyword, const OptionDef* oldOption,
                              const OptionDef* newOption, Value oldValue, Value newValue) {
    Change change{.rule = rule, .keyword = std::string(keyword)};
    change.option = std::string((oldOption != nullptr ? oldOption : newOption)->name.view());
    change.oldValue = std::move(oldValue);
    change.newValue = std::move(newValue);
    if (oldOption != nullptr) change.oldLine = oldOption->lineNumber;
    if (newOption != nullptr) change.newLine = newOption->lineNumber;
    changes_.push_back(std::move(change));
}

}  // namespace quillet::diff
