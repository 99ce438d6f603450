// quillet-preview's readers on arbitrary bytes: the table of contents and one
// topic, converted and rendered in memory.
//
// Input: the table of contents, a NUL byte, then the topic (no NUL: all of it
// is the table of contents and the topic is empty). The topic is converted
// as the first and the last entry of the contents read, or, when they hold
// none, as the middle one of three fixed entries, so that a topic is tried
// whatever the contents bytes are.
#include <cstdint>
#include <string>
#include <string_view>

#include "preview/contents_reader.h"
#include "preview/diagnostic.h"
#include "preview/site_layout.h"
#include "preview/site_pages.h"
#include "preview/topic_converter.h"

using namespace quillet::preview;

namespace {

std::vector<ContentsEntry> contentsOf(std::string_view bytes) {
    try {
        return readContents(bytes, "Commands.fltoc");
    } catch (const PreviewError&) {
        return {};
    }
}

void convert(std::string_view topic, const SiteLayout& layout, std::size_t index,
             std::vector<std::vector<std::string>>& terms) {
    try {
        ConvertedTopic converted = convertTopic(topic, "topic.html", layout, index);
        renderTopicPage(layout, index, converted.body);
        terms[index] = std::move(converted.terms);
    } catch (const PreviewError&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t split = input.find('\0');
    const std::string_view contents = input.substr(0, split);
    const std::string_view topic = split == std::string_view::npos ? std::string_view() : input.substr(split + 1);

    std::vector<ContentsEntry> entries = contentsOf(contents);
    const bool fixed = entries.empty();
    if (fixed) entries = {{"a", "a", 0}, {"b", "sub/b", 0}, {"c", "c", 0}};
    const SiteLayout layout(std::move(entries));
    std::vector<std::vector<std::string>> terms(layout.size());
    if (fixed) {
        convert(topic, layout, 1, terms);
    } else {
        convert(topic, layout, 0, terms);
        convert(topic, layout, layout.size() - 1, terms);
    }
    renderIndexPage(layout);
    renderSearchIndex(layout, terms);
    return 0;
}
