#pragma once

#include <random>
#include <string>
#include <vector>

namespace quillet::testing {

// A definition as lines of words, one blank between words.
using Lines = std::vector<std::vector<std::string>>;

// A valid definition using every kind of directive, sized by the random
// sequence: lookup tables, then keywords with their flags, texts and options.
Lines generate(std::mt19937& random);

// One random change that may well break the definition: a word or line
// dropped, doubled or swapped, a misspelt directive, an odd word, or a line
// ending in a carriage return or made too long.
void mutate(Lines& lines, std::mt19937& random);

std::string join(const Lines& lines);

}  // namespace quillet::testing
