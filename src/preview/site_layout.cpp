#include "preview/site_layout.h"

#include <algorithm>

#include "companion/percent_encoding.h"

namespace quillet::preview {

namespace {
constexpr std::string_view kTopicFolder = "topics";
}

SiteLayout::SiteLayout(std::vector<ContentsEntry> entries) : entries_(std::move(entries)) {
    byName_.reserve(entries_.size());
    for (std::size_t topic = 0; topic < entries_.size(); ++topic) byName_.emplace(entries_[topic].name, topic);
}

std::optional<std::size_t> SiteLayout::find(std::string_view name) const {
    const auto found = byName_.find(name);
    if (found == byName_.end()) return std::nullopt;
    return found->second;
}

std::filesystem::path SiteLayout::pageFile(std::size_t topic) const {
    return std::filesystem::path(kTopicFolder) / (entries_[topic].name + ".html");
}

std::string SiteLayout::toTop(std::size_t topic) const {
    const std::string& name = entries_[topic].name;
    std::string way = "../";
    for (std::ptrdiff_t level = std::count(name.begin(), name.end(), '/'); level > 0; --level) way += "../";
    return way;
}

std::string SiteLayout::topicHref(std::string_view toTop, std::size_t topic) const {
    std::string href(toTop);
    href += kTopicFolder;
    href += '/';
    companion::appendPercentEncoded(href, entries_[topic].name);
    href += ".html";
    return href;
}

}  // namespace quillet::preview
