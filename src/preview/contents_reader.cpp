#include "preview/contents_reader.h"

#include <pugixml.hpp>

#include <unordered_set>

#include "docgen/reference_format.h"
#include "preview/diagnostic.h"
#include "preview/xml_error.h"

namespace quillet::preview {

namespace {

constexpr std::string_view kFolder = reference::kContentPath;
constexpr std::string_view kSuffix = reference::kTopicSuffix;

// Sets `name` to the topic that a Link names; false when it names none.
// Folders inside the name must be real ones, so that no topic lies outside
// the reference or the site.
bool topicName(std::string_view link, std::string& name) {
    if (!link.starts_with(kFolder) || !link.ends_with(kSuffix) || link.size() < kFolder.size() + kSuffix.size())
        return false;
    name = link.substr(kFolder.size(), link.size() - kFolder.size() - kSuffix.size());
    for (std::size_t start = 0, slash; (slash = name.find('/', start)) != std::string::npos; start = slash + 1) {
        const std::string_view folder = std::string_view(name).substr(start, slash - start);
        if (folder.empty() || folder == "." || folder == "..") return false;
    }
    return true;
}

}  // namespace

std::vector<ContentsEntry> readContents(std::string_view bytes, const std::string& file) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(
        bytes.data(), bytes.size(), pugi::parse_default | pugi::parse_fragment, pugi::encoding_utf8);
    if (!parsed) throw notWellFormed(file, bytes, parsed);

    std::vector<ContentsEntry> entries;
    std::unordered_set<std::string> names;
    for (const pugi::xml_node node : document.children()) {
        const auto offset = static_cast<std::size_t>(node.offset_debug());
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata)
            throw PreviewError(file, "text outside a TocEntry element", bytes, offset);
        if (node.type() != pugi::node_element) continue;

        const std::size_t start = offset - 1;  // the name follows "<"
        if (std::string_view(node.name()) != "TocEntry")
            throw PreviewError(file, std::string("expected a TocEntry element, found <") + node.name() + ">", bytes,
                               start);
        if (node.first_child())
            throw PreviewError(file, "a TocEntry with content; only a flat list of empty entries is read", bytes,
                               start);
        const pugi::xml_attribute title = node.attribute("Title");
        const pugi::xml_attribute link = node.attribute("Link");
        if (!title) throw PreviewError(file, "TocEntry without a Title attribute", bytes, start);
        if (!link) throw PreviewError(file, "TocEntry without a Link attribute", bytes, start);
        std::string name;
        if (!topicName(link.value(), name))
            throw PreviewError(file,
                               std::string("Link \"") + link.value() + "\" does not name a topic file in " +
                                   std::string(kFolder),
                               bytes, start);
        if (names.insert(name).second) entries.push_back({title.value(), std::move(name), start});
    }
    return entries;
}

}  // namespace quillet::preview
