#include "lint/word_checks.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "lint/quoting.h"
#include "language/directive.h"
#include "lint/suggestions.h"
#include "reader/value_parser.h"

namespace quillet::lint {

namespace {

bool fitsInt32(long long value) {
    return value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max();
}

Finding ignored(std::string_view word, const std::string& readAs, std::string_view rest) {
    return {RuleId::TrailingCharacters,
            quoted(word) + " is read as " + readAs + "; " + quoted(rest) + " after it is ignored"};
}

Finding outOfRange(std::string_view word, const std::string& value, std::int32_t kept) {
    return {RuleId::NumberOutOfRange, quoted(word) + " is " + value +
                                                 ", which 32 bits do not hold; it is kept as " + std::to_string(kept)};
}

// Reads a decimal part as strtol does; `rest` is what it leaves.
long decimal(const std::string& text, std::string_view& rest, bool& overflow) {
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(text.c_str(), &end, 10);
    overflow = errno == ERANGE;
    rest = std::string_view(text).substr(static_cast<std::size_t>(end - text.c_str()));
    return value;
}

std::optional<Finding> checkHexadecimal(std::string_view word, const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const unsigned long value = std::strtoul(text.c_str(), &end, 16);
    if (end == text.c_str())
        return Finding{RuleId::TrailingCharacters,
                       quoted(word) + " holds an x, so it is read as a hexadecimal number, but has no "
                                      "hexadecimal digits: it is 0"};
    if (*end != '\0') return ignored(word, "hexadecimal " + std::to_string(value), end);
    if (errno == ERANGE || value > static_cast<unsigned long>(std::numeric_limits<std::int32_t>::max()))
        return outOfRange(word, std::to_string(value), low32(static_cast<std::int64_t>(value)));
    return std::nullopt;
}

std::optional<Finding> checkShift(std::string_view word, const std::string& text) {
    const std::size_t first = text.find('<');
    const std::size_t last = text.rfind('<');
    std::string_view baseRest;
    std::string_view countRest;
    bool baseOverflow = false;
    bool countOverflow = false;
    const long base = decimal(text.substr(0, first), baseRest, baseOverflow);
    const long count = decimal(text.substr(last + 1), countRest, countOverflow);
    const std::string readAs = std::to_string(base) + "<" + std::to_string(count);
    const std::string_view between = std::string_view(text).substr(first, last - first + 1);
    if (!baseRest.empty() || !countRest.empty() || between.find_first_not_of('<') != std::string_view::npos)
        return Finding{RuleId::TrailingCharacters,
                       quoted(word) + " is read as " + readAs +
                           ": only the number before the first '<' and the number after the last '<' count"};
    const auto shifted = static_cast<unsigned long long>(base) << (static_cast<int>(count) & 63);
    if (baseOverflow || countOverflow || count < 0 || count > 63 || !fitsInt32(static_cast<long long>(shifted)))
        return outOfRange(word, baseOverflow || countOverflow ? "too large" : std::to_string(shifted),
                          low32(static_cast<std::int64_t>(shifted)));
    return std::nullopt;
}

}  // namespace

std::optional<std::string_view> misspeltDirective(std::string_view word) {
    // A carriage return of a Windows line end hides a directive too.
    if (word.ends_with('\r')) word.remove_suffix(1);
    if (word.size() < 2 || word.back() != ':') return std::nullopt;
    for (const DirectiveSpec& spec : kDirectives) {
        const std::size_t allowed = spec.word.size() <= 8 ? 1 : 2;
        if (word.size() + allowed < spec.word.size() || word.size() > spec.word.size() + allowed) continue;
        if (editDistance(word, spec.word) <= allowed) return spec.word;
    }
    return std::nullopt;
}

std::optional<Finding> checkInteger(std::string_view word) {
    const std::string text(word);
    switch (numberForm(text)) {
    case NumberForm::Hexadecimal: return checkHexadecimal(word, text);
    case NumberForm::Shift: return checkShift(word, text);
    case NumberForm::Decimal: break;
    }
    std::string_view rest;
    bool overflow = false;
    const long value = decimal(text, rest, overflow);
    if (!rest.empty()) return ignored(word, std::to_string(value), rest);
    if (overflow) return outOfRange(word, "beyond the range of a long", low32(value));
    if (!fitsInt32(value)) return outOfRange(word, std::to_string(value), low32(value));
    return std::nullopt;
}

std::optional<Finding> checkDouble(std::string_view word) {
    const std::string text(word);
    errno = 0;
    const double value = std::strtod(text.c_str(), nullptr);
    if (errno != ERANGE) return std::nullopt;
    return Finding{RuleId::NumberOutOfRange,
                   quoted(word) + " is beyond the range of a double; it is kept as " + std::to_string(value)};
}

std::optional<Finding> checkLimitWords(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) return std::nullopt;
    const std::size_t end = text.find_first_of(" \t", start);
    if (end == std::string_view::npos || text.find_first_not_of(" \t", end) == std::string_view::npos)
        return std::nullopt;
    return Finding{RuleId::TrailingCharacters,
                   "only the first word of the limit " + quoted(text) + " is read, but the whole text is written "
                   "into the generated code"};
}

bool breaksStringLiteral(std::string_view text) { return text.find_first_of("\\\"") != std::string_view::npos; }

}  // namespace quillet::lint
