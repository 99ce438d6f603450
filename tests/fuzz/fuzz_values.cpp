// The tokenizer and the value parsers on arbitrary text.
//
// Input: one selector byte, then the text. The selector's low five bits pick
// the tokenizer's separator, quote and comment sets; its upper three bits set
// up the option that the limits are checked against. The tokenizer's number
// conversions are compared with strtoll and strtod.
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "fuzz_support.h"
#include "model/definition_set.h"
#include "nqtoken.h"
#include "reader/value_parser.h"

using namespace quillet;

namespace {

struct TokenListDeleter {
    void operator()(nqtoken_list* list) const { nqtoken_delete(list); }
};
using TokenList = std::unique_ptr<nqtoken_list, TokenListDeleter>;

struct Setup {
    RunContext context = fuzz::quietContext();
    Setup() { context.report.errorHandler = fuzz::quietErrorHandler(context); }
};

const Reporter& report() {
    static Setup instance;
    return instance.context.report;
}

void require(bool condition) {
    if (!condition) std::abort();
}

TokenList tokenize(const std::string& text, unsigned selector) {
    static const char* const kSeparators[] = {" \t\n", ",;"};
    static const char* const kQuotes[] = {"", "\"", "\"'", "'"};
    const bool nullSets = (selector & 16) != 0;
    const char* quotes = kQuotes[(selector >> 1) & 3];
    const char* comments = (selector & 8) != 0 ? "#" : "";
    if (nullSets && *quotes == 0) quotes = nullptr;
    if (nullSets && *comments == 0) comments = nullptr;
    nqtoken_list* made = nullptr;
    if (nqtoken_new(&made, text.c_str(), kSeparators[selector & 1], quotes, comments, 0, 0) != 0) {
        require(made == nullptr);
        return nullptr;
    }
    return TokenList(made);
}

// The integer conversion accepts exactly a signed run of decimal digits
// within 32 bits; the double conversion whatever strtod consumes whole.
void checkConversions(const nqtoken_list* tokens, int index) {
    const char* word = nqtoken_get_token(tokens, index);
    require(word != nullptr);

    const char* digits = word + ((*word == '+' || *word == '-') ? 1 : 0);
    bool allDigits = *digits != 0 && std::strspn(digits, "0123456789") == std::strlen(digits);
    errno = 0;
    long long expected = std::strtoll(word, nullptr, 10);
    bool inRange = errno == 0 && expected >= INT32_MIN && expected <= INT32_MAX;
    int integer = 0;
    const bool isInteger = nqtoken_get_int(tokens, index, &integer) == 0;
    require(isInteger == (allDigits && inRange));
    if (isInteger) require(integer == expected);

    char* end = nullptr;
    double expectedDouble = std::strtod(word, &end);
    double real = 0;
    const bool isDouble = nqtoken_get_double(tokens, index, &real) == 0;
    require(isDouble == (*word != 0 && *end == 0));
    if (isDouble) require(real == expectedDouble || (std::isnan(real) && std::isnan(expectedDouble)));
}

void checkDefaults(DefinitionSet& definitions, const nqtoken_list* tokens, int index) {
    for (OptionType type : {OptionType::NQ_INT_TYPE, OptionType::NQ_DOUBLE_TYPE, OptionType::NQ_BOOL_TYPE,
                            OptionType::NQ_STRING_TYPE}) {
        OptionDef option(1);
        option.type = type;
        const bool accepted = parseDefaultValue(definitions, report(), option, tokens, index);
        require(accepted == option.hasDefault || (type == OptionType::NQ_INT_TYPE && accepted));
    }
}

// Limits against an option set up by the selector's upper bits, with a
// lookup table whose entry IDs a limit may name.
void checkLimits(DefinitionSet& definitions, const std::string& text, unsigned selector) {
    LookupTableDef* table = definitions.newLookupTable(definitions.keep("Colors"));
    definitions.addLookupEntry(*table, definitions.keep("RED"), definitions.keep("red"), 1);
    definitions.addLookupEntry(*table, definitions.keep("GREEN"), definitions.keep("green"), 16);
    OptionDef option(1);
    const bool isDouble = (selector & 32) != 0;
    option.type = isDouble ? OptionType::NQ_DOUBLE_TYPE : OptionType::NQ_INT_TYPE;
    if ((selector & 64) != 0) {
        option.hasDefault = true;
        if (isDouble) option.defaultValue.doubleValue = 2.5;
        else option.defaultValue.intValue = 5;
    }
    if ((selector & 128) != 0) {
        option.hasLookupTable = true;
        option.lookupTableName = table->name;
    }
    option.defaultText = definitions.keep(text);

    nqtoken_list* made = nullptr;
    if (nqtoken_new(&made, nullptr, nullptr, nullptr, nullptr, 0, 0) != 0) return;
    const TokenList words(made);
    require(setLimit(definitions, report(), option, text, Limit::Minimum, *words) == option.hasMinimum);
    require(setLimit(definitions, report(), option, text, Limit::Maximum, *words) == option.hasMaximum);
    require(resolveSymbolicDefault(definitions, option) == (isDouble || option.hasLookupTable));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const unsigned selector = data[0];
    const std::string text = fuzz::bytesOf(data + 1, size - 1);

    DefinitionSet definitions;
    if (TokenList tokens = tokenize(text, selector)) {
        const int count = nqtoken_num(tokens.get());
        require(nqtoken_get_token(tokens.get(), count) == nullptr);
        for (int index = 0; index < count; ++index) {
            checkConversions(tokens.get(), index);
            checkDefaults(definitions, tokens.get(), index);
        }
    }

    std::int64_t value = 0;
    parseNumber(text, value);
    checkLimits(definitions, text, selector);
    return 0;
}
