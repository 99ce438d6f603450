#include "lint/suggestions.h"

#include <algorithm>
#include <utility>

#include "model/option_type.h"

namespace quillet::lint {

namespace {

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }


// Words of other languages and habits for the four types, compared letter
// case aside and with the type words' own NQ_ and _TYPE taken off.
constexpr std::pair<std::string_view, std::string_view> kTypeSynonyms[] = {
    {"INTEGER", "NQ_INT_TYPE"},   {"LONG", "NQ_INT_TYPE"},       {"FLOAT", "NQ_DOUBLE_TYPE"},
    {"REAL", "NQ_DOUBLE_TYPE"},   {"NUMBER", "NQ_DOUBLE_TYPE"},  {"BOOLEAN", "NQ_BOOL_TYPE"},
    {"FLAG", "NQ_BOOL_TYPE"},     {"STR", "NQ_STRING_TYPE"},     {"TEXT", "NQ_STRING_TYPE"},
};

constexpr std::pair<std::string_view, std::string_view> kBooleanSynonyms[] = {
    {"yes", "true"}, {"y", "true"}, {"1", "true"}, {"no", "false"}, {"n", "false"}, {"0", "false"},
};

std::string_view core(std::string_view word) {
    if (word.size() > 3 && sameLetters(word.substr(0, 3), "NQ_")) word.remove_prefix(3);
    if (word.size() > 5 && sameLetters(word.substr(word.size() - 5), "_TYPE")) word.remove_suffix(5);
    return word;
}

}  // namespace

bool sameLetters(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return upper(x) == upper(y);
           });
}

std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) d[i][0] = i;
    for (std::size_t j = 0; j <= b.size(); ++j) d[0][j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t cost = upper(a[i - 1]) == upper(b[j - 1]) ? 0 : 1;
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + cost});
            if (i > 1 && j > 1 && upper(a[i - 1]) == upper(b[j - 2]) && upper(a[i - 2]) == upper(b[j - 1]))
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    }
    return d[a.size()][b.size()];
}

std::optional<std::string_view> closestWord(std::string_view word, const std::vector<std::string_view>& candidates) {
    for (std::string_view candidate : candidates)
        if (sameLetters(word, candidate)) return candidate;
    const std::size_t allowed = word.size() <= 4 ? 1 : word.size() <= 8 ? 2 : 3;
    std::optional<std::string_view> best;
    std::size_t bestDistance = allowed + 1;
    for (std::string_view candidate : candidates) {
        // The distance is at least the difference in length.
        if (std::max(word.size(), candidate.size()) - std::min(word.size(), candidate.size()) >= bestDistance)
            continue;
        if (const std::size_t distance = editDistance(word, candidate); distance < bestDistance) {
            best = candidate;
            bestDistance = distance;
        }
    }
    return best;
}

std::optional<std::string_view> meantType(std::string_view word) {
    std::vector<std::string_view> words;
    for (const TypeName& name : kTypeNames) {
        if (sameLetters(core(word), core(name.word))) return name.word;
        words.push_back(name.word);
    }
    for (const auto& [synonym, type] : kTypeSynonyms)
        if (sameLetters(core(word), synonym)) return type;
    return closestWord(word, words);
}

std::optional<std::string_view> meantBoolean(std::string_view word) {
    for (const auto& [synonym, meant] : kBooleanSynonyms)
        if (sameLetters(word, synonym)) return meant;
    return closestWord(word, {"true", "false", "on", "off"});
}

}  // namespace quillet::lint
