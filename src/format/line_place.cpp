#include "format/line_place.h"

namespace quillet::format {

namespace {

// The keyword's own directives and LOOKUP: stand at level 0; OPTION: and the
// directives that need an option, at level 1.
int level(const DirectiveSpec& spec) {
    return spec.directive == Directive::OPTION || spec.needs == Needs::KeywordAndOption ? 1 : 0;
}

}  // namespace

LinePlace placeLine(const DirectiveSpec* first, const DirectiveSpec* inForce) {
    if (first != nullptr)
        return {.indent = level(*first) * kIndentStep,
                .opensBlock = first->directive == Directive::KEYWORD || first->directive == Directive::LOOKUP};
    // Words before the first directive are ignored by quillet; they stay in column 1.
    if (inForce == nullptr) return {};
    // A directive's words continued on a later line go one level deeper than it.
    return {.indent = (level(*inForce) + 1) * kIndentStep,
            .lookupEntry = inForce->arguments == Arguments::Lookup};
}

}  // namespace quillet::format
