#include "reader/value_parser.h"

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>

#include "language/diagnostic.h"

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

}  // namespace

bool readLimit(const DefinitionSet& definitions, std::optional<OptionType> type, const char* text,
               nqtoken_list& words, LimitReading& reading) {
    if (nqtoken_refill(&words, text, " \t\n", nullptr, nullptr) != 0 || nqtoken_num(&words) == 0) return false;
    reading = LimitReading{};
    if (type == OptionType::NQ_INT_TYPE) {
        int parsed = 0;
        if (nqtoken_get_int(&words, 0, &parsed) == 0) {
            reading.integer = parsed;
            return true;
        }
        reading.byEntryId = definitions.findEntryValueById(text, reading.integer);
        return reading.byEntryId;
    }
    if (type == OptionType::NQ_DOUBLE_TYPE) return nqtoken_get_double(&words, 0, &reading.real) == 0;
    return true;
}

NumberForm numberForm(std::string_view text) {
    if (text.find_first_of("xX") != std::string_view::npos) return NumberForm::Hexadecimal;
    if (text.find('<') != std::string_view::npos) return NumberForm::Shift;
    return NumberForm::Decimal;
}

bool parseNumber(std::string_view view, std::int64_t& value) {
    const std::string text(view);
    const NumberForm form = numberForm(text);
    if (form == NumberForm::Hexadecimal) {
        // Whatever the conversion makes of it, a text with an x is a number.
        value = static_cast<std::int64_t>(toHex(text.c_str()));
        return true;
    }
    if (form == NumberForm::Shift) {
        const std::size_t lastShift = text.rfind('<');
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
            raise(report, DiagnosticId::BadDoubleDefault, token);
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
            raise(report, DiagnosticId::BadBooleanDefault, token);
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
    LimitReading reading;
    if (!readLimit(definitions, option.type, text.c_str(), words, reading)) return false;

    const bool minimum = limit == Limit::Minimum;
    if (option.type == OptionType::NQ_INT_TYPE) {
        const std::int32_t value = reading.integer;
        if (reading.byEntryId) raise(report, DiagnosticId::LimitByEntryId, text.c_str(), value);
        if (option.hasDefault) {
            const std::int32_t defaultValue = option.intDefault();
            if (minimum && defaultValue < value) {
                raise(report, DiagnosticId::MinimumAboveDefault, value, defaultValue);
                return false;
            }
            if (!minimum && defaultValue > value) {
                raise(report, DiagnosticId::MaximumBelowDefault, value, defaultValue);
                return false;
            }
        }
    } else if (option.type == OptionType::NQ_DOUBLE_TYPE) {
        const double value = reading.real;
        if (option.hasDefault) {
            const double defaultValue = option.doubleDefault();
            if (minimum && value > defaultValue) {
                raise(report, DiagnosticId::DoubleMinimumAboveDefault, value, defaultValue);
                return false;
            }
            if (!minimum && defaultValue > value) {
                raise(report, DiagnosticId::DoubleMaximumBelowDefault, value, defaultValue);
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
