#include "diff/option_values.h"

#include <charconv>
#include <cmath>

namespace quillet::diff {

namespace {

// The shortest text that reads back as the same double.
std::string shownDouble(double value) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

}  // namespace

std::string typeWord(std::optional<OptionType> type) {
    for (const TypeName& name : kTypeNames)
        if (type == name.type) return std::string(name.word);
    return "no type";
}

bool sameDefault(const OptionDef& a, const OptionDef& b) {
    if (a.hasDefault != b.hasDefault) return false;
    if (!a.hasDefault) return true;
    switch (a.type.value_or(OptionType::NQ_STRING_TYPE)) {
    case OptionType::NQ_INT_TYPE: return a.intDefault() == b.intDefault();
    case OptionType::NQ_DOUBLE_TYPE:
        return a.doubleDefault() == b.doubleDefault() ||
               (std::isnan(a.doubleDefault()) && std::isnan(b.doubleDefault()));
    case OptionType::NQ_BOOL_TYPE: return a.boolDefault() == b.boolDefault();
    case OptionType::NQ_STRING_TYPE: return a.stringDefault() == b.stringDefault();
    }
    return true;
}

std::string shownDefault(const OptionDef& option) {
    if (!option.hasDefault) return "no default";
    switch (option.type.value_or(OptionType::NQ_STRING_TYPE)) {
    case OptionType::NQ_INT_TYPE: {
        // A symbolic default shows its name with the value it resolved to.
        const std::string value = std::to_string(option.intDefault());
        return option.defaultText.empty() ? value : std::string(option.defaultText.view()) + " (" + value + ")";
    }
    case OptionType::NQ_DOUBLE_TYPE: return shownDouble(option.doubleDefault());
    case OptionType::NQ_BOOL_TYPE: return option.boolDefault() ? "true" : "false";
    case OptionType::NQ_STRING_TYPE: return '"' + std::string(option.stringDefault().view()) + '"';
    }
    return "";
}

LimitReader::LimitReader() { nqtoken_new(&words_, "", nullptr, nullptr, nullptr, 0, 0); }

LimitReader::~LimitReader() { nqtoken_delete(words_); }

LimitValue LimitReader::read(const DefinitionSet& definitions, const OptionDef& option, Limit limit) {
    const bool minimum = limit == Limit::Minimum;
    const Text text = minimum ? option.minimumText : option.maximumText;
    LimitValue result;
    LimitReading reading;
    if (!(minimum ? option.hasMinimum : option.hasMaximum) || words_ == nullptr ||
        !readLimit(definitions, option.type, text.data(), *words_, reading))
        return result;
    if (option.type == OptionType::NQ_INT_TYPE) {
        result.value = reading.integer;
        result.byEntryId = reading.byEntryId;
    } else if (option.type == OptionType::NQ_DOUBLE_TYPE && !std::isnan(reading.real)) {
        result.value = reading.real;
    }
    return result;
}

std::string shownLimit(const OptionDef& option, Limit limit, const LimitValue& read) {
    const bool minimum = limit == Limit::Minimum;
    if (!(minimum ? option.hasMinimum : option.hasMaximum)) return minimum ? "no minimum" : "no maximum";
    std::string shown = (minimum ? "minimum " : "maximum ") + std::string(minimum ? option.minimumText : option.maximumText);
    if (read.byEntryId) shown += " (" + std::to_string(static_cast<std::int32_t>(*read.value)) + ")";
    return shown;
}

}  // namespace quillet::diff
