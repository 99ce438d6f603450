#pragma once

#include <optional>
#include <string>

#include "model/definition_set.h"
#include "nqtoken.h"
#include "reader/value_parser.h"

namespace quillet::diff {

// How reports show values: free texts (string defaults, summaries,
// descriptions) in double quotes, without the blank the reader appends to
// accumulated texts; everything else as written.
std::string quotedText(std::string_view text);
std::string typeWord(std::optional<OptionType> type);

// The default a script gets when it omits the option. Both options must be
// of the same type.
bool sameDefault(const OptionDef& a, const OptionDef& b);
std::string shownDefault(const OptionDef& option);

struct LimitValue {
    std::optional<double> value;  // none: nothing is refused on this side
    std::string shown;            // "minimum 5", "maximum SIZE_MAX (100)", "no minimum"
};

// Reads accepted limit texts the way the reader checked them: an integer
// option's limit is its first word as an integer or else the whole text as a
// lookup entry ID; a double option's is its first word as a double (a NaN
// limit refuses nothing).
class LimitReader {
public:
    LimitReader();
    ~LimitReader();
    LimitReader(const LimitReader&) = delete;
    LimitReader& operator=(const LimitReader&) = delete;

    LimitValue read(const DefinitionSet& definitions, const OptionDef& option, Limit limit);

private:
    nqtoken_list* words_ = nullptr;
};

}  // namespace quillet::diff
