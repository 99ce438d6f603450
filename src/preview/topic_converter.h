#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "preview/site_layout.h"

namespace quillet::preview {

struct ConvertedTopic {
    std::string body;                // the HTML of everything inside the topic's body
    std::vector<std::string> terms;  // what the search finds it by besides its title; sorted, unique
};

// Reads one topic (XHTML with MadCap elements, as quillet -html writes it)
// and converts its body for the site page of `topic`: MadCap cross-references
// become links, the navigation placeholders lead to the neighbours in the
// contents, links resolve to the site's pages or lose their target, and the
// concepts are dropped. The terms are the option names (the topic's <dt>s)
// and the titles of the topics it links to (a keyword's aliases, an alias's
// keyword). Throws PreviewError, placed in `file`, for a topic that is not
// well-formed or has no html body.
ConvertedTopic convertTopic(std::string_view bytes, const std::string& file, const SiteLayout& layout,
                            std::size_t topic);

}  // namespace quillet::preview
