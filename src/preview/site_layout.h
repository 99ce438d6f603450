#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "preview/contents_reader.h"

namespace quillet::preview {

// Where each page of the site lies and how the pages link to each other.
// index.html, the stylesheet and the search files lie at the top; the topic
// pages lie below topics/ under their topics' names, so that no topic name
// (a keyword called "index", say) meets one of the site's own files.
class SiteLayout {
public:
    explicit SiteLayout(std::vector<ContentsEntry> entries);

    std::size_t size() const { return entries_.size(); }
    const ContentsEntry& entry(std::size_t topic) const { return entries_[topic]; }
    std::optional<std::size_t> find(std::string_view name) const;

    // The page of a topic, relative to the top of the site.
    std::filesystem::path pageFile(std::size_t topic) const;
    // The way from a topic's page up to the top of the site: "../" per level.
    std::string toTop(std::size_t topic) const;
    // A link to a topic's page from a page that reaches the top by `toTop`.
    std::string topicHref(std::string_view toTop, std::size_t topic) const;

private:
    std::vector<ContentsEntry> entries_;
    std::unordered_map<std::string_view, std::size_t> byName_;
};

}  // namespace quillet::preview
