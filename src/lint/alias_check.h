#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "lint/diagnostic.h"

namespace quillet::lint {

// An alias group read as its line suggests.
struct AliasUse {
    std::string_view alias;
    Position aliasAt;
    std::string_view keyword;
    Position keywordAt;
};

// Checks an aliases file as the tool's reference path reads it: words in
// groups of three (an ignored word, the alias, the keyword it stands for)
// whatever the line ends, a group whose first word starts with '#' being a
// comment to the end of its line. Warns where the file is not read as its
// lines suggest, and for aliases of keywords that neither `keywords` nor an
// earlier alias has. `uses`, where given, receives every such group, whose
// views are into `content`.
std::vector<Diagnostic> checkAliases(std::string_view content, std::unordered_set<std::string> keywords,
                                     std::vector<AliasUse>* uses = nullptr);

}  // namespace quillet::lint
