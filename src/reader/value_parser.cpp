#include "reader/value_parser.h"

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>

namespace quillet {

namespace {

// The C conversions, leaving errno as the caller had it.
long toLong(const char* text, char** end) {
    const int saved = errno;
    const long value = std::strtol(text, end, 10);
    errno = saved;
    return value;
}

unsigned long toHex(const char* text) {
    const int saved = errno;
    const unsigned long value = std::strtoul(text, nullptr, 16);
    errno = saved;
    return value;
}

// The limit's numeric value: the first word as an integer, or else the whole
// text as the ID of a lookup entry of any table.
bool integerLimit(const DefinitionSet& definitions, const Reporter& report, const nqtoken_list* words,
                  std::string_view text, std::int32_t& value) {
    int parsed = 0;
    if (nqtoken_get_int(words, 0, &parsed) == 0) {
        value = parsed;
        return true;
    }
    if (!definitions.findEntryValueById(text, value)) return false;
    const std::string shown(text);
    report.errorDebug("%s%s%s%d\n", "  Found Table Name entry (", shown.c_str(), "). Value is ", value);
    return true;
}

}  // namespace

bool parseNumber(std::string_view view, std::int64_t& value) {
    const std::string text(view);
    if (text.find_first_of("xX") != std::string::npos) {
        // Whatever the conversion makes of it, a text with an x is a number.
        value = static_cast<std::int64_t>(toHex(text.c_str()));
        return true;
    }
    const std::size_t lastShift = text.rfind('<');
    if (lastShift != std::string::npos) {
        if (lastShift + 1 == text.size()) return false;
        const int count = static_cast<int>(toLong(text.c_str() + lastShift + 1, nullptr));
        const std::string base = text.substr(0, text.find('<'));
        value = static_cast<std::int64_t>(static_cast<std::uint64_t>(toLong(base.c_str(), nullptr)) << (count & 63));
        return true;
    }
    char* end = nullptr;
    const long converted = toLong(text.c_str(), &end);
    if (end == text.c_str()) return false;
    value = converted;
    return true;
}

bool parseDefaultValue(DefinitionSet& definitions, const Reporter& report, OptionDef& option,
                       const nqtoken_list* tokens, int index) {
    const char* token = nqtoken_get_token(tokens, index);
    const std::string_view word(token);
    if (!option.type) return false;
    switch (*option.type) {
    case OptionType::NQ_INT_TYPE: {
        // A text that is no number is a symbolic default, resolved later
        // through the option's lookup table.
        std::int64_t value = 0;
        if (parseNumber(word, value)) {
            option.defaultValue.intValue = low32(value);
            option.hasDefault = true;
        } else {
            option.defaultText = definitions.keep(word);
        }
        return true;
    }
    case OptionType::NQ_DOUBLE_TYPE: {
        double value = 0;
        if (nqtoken_get_double(tokens, index, &value) != 0) {
            report.error("Bad double default value: '%s'\n", token);
            return false;
        }
        option.defaultValue.doubleValue = value;
        option.hasDefault = true;
        return true;
    }
    case OptionType::NQ_BOOL_TYPE:
        if (word == "true" || word == "on") {
            option.defaultValue.boolValue = true;
        } else if (word == "false" || word == "off") {
            option.defaultValue.boolValue = false;
        } else {
            report.error("Bad boolean default value: '%s'\n", token);
            return false;
        }
        option.hasDefault = true;
        return true;
    case OptionType::NQ_STRING_TYPE:
        option.defaultText = definitions.keep(word);
        option.hasDefault = true;
        return true;
    }
    return false;
}

bool setLimit(DefinitionSet& definitions, const Reporter& report, OptionDef& option, std::string_view view,
              Limit limit, nqtoken_list& words) {
    const std::string text(view);
    if (nqtoken_refill(&words, text.c_str(), " \t\n", nullptr, nullptr) != 0) return false;
    if (nqtoken_num(&words) == 0) return false;

    const bool minimum = limit == Limit::Minimum;
    if (option.type == OptionType::NQ_INT_TYPE) {
        std::int32_t value = 0;
        if (!integerLimit(definitions, report, &words, text, value)) return false;
        if (option.hasDefault) {
            const std::int32_t defaultValue = option.intDefault();
            if (minimum && defaultValue < value) {
                report.standardError("Minimum value :'%d' is larger than the default value '%d'\n", value,
                                     defaultValue);
                return false;
            }
            if (!minimum && defaultValue > value) {
                report.standardError("Maximum value :'%d' is less than the default value '%d'\n", value,
                                     defaultValue);
                return false;
            }
        }
    } else if (option.type == OptionType::NQ_DOUBLE_TYPE) {
        double value = 0;
        if (nqtoken_get_double(&words, 0, &value) != 0) return false;
        if (option.hasDefault) {
            const double defaultValue = option.doubleDefault();
            if (minimum && value > defaultValue) {
                report.standardError("Minimum value :'%g' is larger than the default value '%g'\n", value,
                                     defaultValue);
                return false;
            }
            if (!minimum && defaultValue > value) {
                report.standardError("Maximum value :'%g' is less than the default value '%g'\n", value,
                                     defaultValue);
                return false;
            }
        }
    }
    (minimum ? option.minimumText : option.maximumText) = definitions.keep(text);
    (minimum ? option.hasMinimum : option.hasMaximum) = true;
    return true;
}

bool resolveSymbolicDefault(const DefinitionSet& definitions, OptionDef& option) {
    if (option.type != OptionType::NQ_INT_TYPE) return true;
    if (!option.hasLookupTable) return false;
    // Entry names, not IDs, and only the option's own table; after a numeric
    // default the text is empty, so an entry with an empty name matches it.
    const LookupTableDef* table = definitions.findLookupTable(option.lookupTableName);
    std::int32_t value = 0;
    if (table != nullptr && table->findValueByName(option.defaultText, value)) {
        option.defaultValue.intValue = value;
        option.hasDefault = true;
    }
    return true;
}

}  // namespace quillet
