#pragma once

#include <optional>
#include <string>

#include "model/definition_set.h"
#include "nqtoken.h"
#include "reader/value_parser.h"

namespace quillet::diff {

// How reports show values: free texts (string defaults, summaries,
// descriptions) in double quotes, everything else as written.
std::string typeWord(std::optional<OptionType> type);

// The default a script gets when it omits the option. Both options must be
// of the same type.
bool sameDefault(const OptionDef& a, const OptionDef& b);
std::string shownDefault(const OptionDef& option);

struct LimitValue {
    std::optional<double> value;  // none: nothing is refused on this side
    bool byEntryId = false;       // the text named a lookup entry
};

// Reads accepted limit texts with the reader's own readLimit, as it checked
// them; a NaN limit refuses nothing.
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

// "minimum 5", "maximum SIZE_MAX (100)" for an entry ID, "no minimum".
std::string shownLimit(const OptionDef& option, Limit limit, const LimitValue& read);

}  // namespace quillet::diff
