#include "reader/value_parser.h"

#include <cerrno>
#include <cstdlib>
#include <memory>

#include "nqerr.h"

namespace quillet {

namespace {

// Like strtol, but leaves errno as the caller had it.
long toLong(const char* text, char** end) {
    int saved = errno;
    long value = std::strtol(text, end, 10);
    errno = saved;
    return value;
}

struct TokenListDeleter {
    void operator()(nqtoken_list* list) const { nqtoken_delete(list); }
};
using TokenList = std::unique_ptr<nqtoken_list, TokenListDeleter>;

enum class Limit { Minimum, Maximum };

// The limit's numeric value: the first word as an integer, or else the whole
// text as the ID of a lookup entry of any table.
bool integerLimit(const DefinitionSet& definitions, const RunContext& context, const nqtoken_list* words,
                  const std::string& text, std::int32_t& value) {
    int parsed = 0;
    if (nqtoken_get_int(words, 0, &parsed) == 0) {
        value = parsed;
        return true;
    }
    if (!definitions.findEntryValueById(text, value)) return false;
    context.report.errorDebug("%s%s%s%d\n", "  Found Table Name entry (", text.c_str(),
                "). Value is ", value);
    return true;
}

bool setLimit(const DefinitionSet& definitions, const RunContext& context, OptionDef& option,
              const std::string& text, Limit limit) {
    nqtoken_list* made = nullptr;
    if (nqtoken_new(&made, text.c_str(), " \t\n", nullptr, nullptr, 0, 0) != 0) return false;
    TokenList words(made);
    if (nqtoken_num(words.get()) == 0) return false;

    const bool minimum = limit == Limit::Minimum;
    if (option.type == OptionType::NQ_INT_TYPE) {
        std::int32_t value = 0;
        if (!integerLimit(definitions, context, words.get(), text, value)) return false;
        if (option.hasDefault) {
            const std::int32_t defaultValue = option.intDefault();
            if (minimum && defaultValue < value) {
                context.report.standardError("Minimum value :'%d' is larger than the default value '%d'\n", value,
                             defaultValue);
                return false;
            }
            if (!minimum && defaultValue > value) {
                context.report.standardError("Maximum value :'%d' is less than the default value '%d'\n", value,
                             defaultValue);
                return false;
            }
        }
    } else if (option.type == OptionType::NQ_DOUBLE_TYPE) {
        double value = 0;
        if (nqtoken_get_double(words.get(), 0, &value) != 0) return false;
        if (option.hasDefault) {
            const double defaultValue = option.doubleDefault();
            if (minimum && value > defaultValue) {
                context.report.standardError("Minimum value :'%g' is larger than the default value '%g'\n", value,
                             defaultValue);
                return false;
            }
            if (!minimum && defaultValue > value) {
                context.report.standardError("Maximum value :'%g' is less than the default value '%g'\n", value,
                             defaultValue);
                return false;
            }
        }
    }
    if (minimum) {
        option.minimumText = text;
        option.hasMinimum = true;
    } else {
        option.maximumText = text;
        option.hasMaximum = true;
    }
    return true;
}

}  // namespace

int parseNumber(const std::string& text, std::int64_t& value) {
    if (text.find_first_of("xX") != std::string::npos) {
        int saved = errno;
        value = static_cast<std::int64_t>(std::strtoul(text.c_str(), nullptr, 16));
        errno = saved;
        return 0;
    }
    const std::size_t lastShift = text.rfind('<');
    if (lastShift != std::string::npos) {
        if (lastShift + 1 == text.size()) return 1;
        const int count = static_cast<int>(toLong(text.c_str() + lastShift + 1, nullptr));
        const std::string base = text.substr(0, text.find('<'));
        const auto shifted = static_cast<std::uint64_t>(toLong(base.c_str(), nullptr)) << (count & 63);
        value = static_cast<std::int64_t>(shifted);
        return 0;
    }
    char* end = nullptr;
    const long converted = toLong(text.c_str(), &end);
    if (end == text.c_str()) return 1;
    value = converted;
    return 0;
}

bool parseDefaultValue(OptionDef& option, const RunContext& context, const nqtoken_list* tokens, int index) {
    const std::string token = nqtoken_get_token(tokens, index);
    switch (option.type) {
    case OptionType::NQ_INT_TYPE: {
        // A text that is no number is a symbolic default, resolved later
        // through the option's lookup table.
        std::int64_t value = 0;
        if (parseNumber(token, value) == 0) {
            option.defaultValue = low32(value);
            option.hasDefault = true;
        } else {
            option.defaultText = token;
        }
        return true;
    }
    case OptionType::NQ_DOUBLE_TYPE: {
        double value = 0;
        if (nqtoken_get_double(tokens, index, &value) != 0) {
            context.report.error("Bad double default value: '%s'\n", token.c_str());
            return false;
        }
        option.defaultValue = value;
        option.hasDefault = true;
        return true;
    }
    case OptionType::NQ_BOOL_TYPE:
        if (token == "true" || token == "on") {
            option.defaultValue = true;
        } else if (token == "false" || token == "off") {
            option.defaultValue = false;
        } else {
            context.report.error("Bad boolean default value: '%s'\n", token.c_str());
            return false;
        }
        option.hasDefault = true;
        return true;
    case OptionType::NQ_STRING_TYPE:
        option.defaultText = token;
        option.hasDefault = true;
        return true;
    }
    return false;
}

bool setMinimum(const DefinitionSet& definitions, const RunContext& context, OptionDef& option,
                const std::string& text) {
    return setLimit(definitions, context, option, text, Limit::Minimum);
}

bool setMaximum(const DefinitionSet& definitions, const RunContext& context, OptionDef& option,
                const std::string& text) {
    return setLimit(definitions, context, option, text, Limit::Maximum);
}

bool resolveSymbolicDefault(const DefinitionSet& definitions, OptionDef& option) {
    if (option.type != OptionType::NQ_INT_TYPE) return true;
    if (!option.hasLookupTable) return false;
    // Entry names, not IDs, and only the option's own table; after a numeric
    // default the text is empty, so an entry with an empty name matches it.
    const LookupTableDef* table = definitions.findLookupTable(option.lookupTableName);
    std::int32_t value = 0;
    if (table != nullptr && table->findValueByName(option.defaultText, value)) {
        option.defaultValue = value;
        option.hasDefault = true;
    }
    return true;
}

}  // namespace quillet
