#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace quillet::lint {

// Equal, letter case aside.
bool sameLetters(std::string_view a, std::string_view b);

// Edit distance counting a swap of neighbours as one edit, letter case aside.
std::size_t editDistance(std::string_view a, std::string_view b);

// The word of `candidates` that `word` most likely misspells: one equal to it
// letter case aside, or else the nearest within a few edits (one for a word
// of up to four bytes, two up to eight, three beyond); the first of equals.
std::optional<std::string_view> closestWord(std::string_view word, const std::vector<std::string_view>& candidates);

// The type word of OPTION: meant by an unknown one: `NQ_INTT_TYPE`,
// `NQ_REAL_TYPE` and `double` all mean `NQ_DOUBLE_TYPE` or its neighbours.
std::optional<std::string_view> meantType(std::string_view word);
// The boolean default meant by a refused one: `yes` is `true`, `Off` is `off`.
std::optional<std::string_view> meantBoolean(std::string_view word);

}  // namespace quillet::lint
