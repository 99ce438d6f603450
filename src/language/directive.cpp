#include "language/directive.h"

namespace quillet {

const DirectiveSpec* findDirective(std::string_view word) {
    // Every directive word ends in a colon; most words are arguments, so
    // this spares them the search.
    if (word.empty() || word.back() != ':') return nullptr;
    for (const DirectiveSpec& spec : kDirectives)
        if (spec.word == word) return &spec;
    return nullptr;
}

}  // namespace quillet
