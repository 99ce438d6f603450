#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "preview/site_layout.h"

namespace quillet::preview {

// The line by which a later run knows index.html, and so the directory that
// holds it, for a site of its own that it may replace.
extern const char* const kGeneratorMark;

// The page of a topic around its converted body.
std::string renderTopicPage(const SiteLayout& layout, std::size_t topic, const std::string& body);

// index.html: the contents as a sidebar with the search box.
std::string renderIndexPage(const SiteLayout& layout);

// search-index.js: per contents entry, in contents order, its title and
// terms lower-cased by the script; a script file rather than JSON, because a
// page opened from file:// may not fetch().
std::string renderSearchIndex(const SiteLayout& layout, const std::vector<std::vector<std::string>>& terms);

}  // namespace quillet::preview
