#include "preview/preview.h"

#include <cstring>
#include <string>
#include <vector>

#include "docgen/reference_format.h"
#include "preview/contents_reader.h"
#include "preview/diagnostic.h"
#include "preview/file_io.h"
#include "preview/site_assets.h"
#include "preview/site_directory.h"
#include "preview/site_layout.h"
#include "preview/site_pages.h"
#include "preview/topic_converter.h"

namespace fs = std::filesystem;

namespace quillet::preview {

namespace {

// Replacing the site must not take the reference with it.
bool liesInside(const fs::path& inner, const fs::path& outer) {
    std::error_code error;
    const fs::path relative = fs::weakly_canonical(inner, error).lexically_relative(fs::weakly_canonical(outer, error));
    return !error && !relative.empty() && *relative.begin() != "..";
}

}  // namespace

void buildPreview(const fs::path& reference, const fs::path& site) {
    const fs::path contentsPath = reference / quillet::reference::kIndexFile;
    const std::string contentsFile = contentsPath.string();
    std::string contents;
    if (const int error = readWholeFile(contentsPath, contents))
        throw PreviewError(contentsFile, std::string("cannot read the table of contents: ") + std::strerror(error));
    const SiteLayout layout(readContents(contents, contentsFile));
    if (liesInside(reference, site))
        throw PreviewError(site.string(), "holds the reference, which replacing the site would remove");

    StagedSite staged(site);
    std::vector<std::vector<std::string>> terms;
    terms.reserve(layout.size());
    std::string bytes;
    for (std::size_t topic = 0; topic < layout.size(); ++topic) {
        const fs::path topicPath = reference / (layout.entry(topic).name + std::string(quillet::reference::kTopicSuffix));
        if (const int error = readWholeFile(topicPath, bytes))
            throw PreviewError(contentsFile,
                               std::string("cannot read topic ") + topicPath.string() + ": " + std::strerror(error), contents,
                               layout.entry(topic).offset);
        ConvertedTopic converted = convertTopic(bytes, topicPath.string(), layout, topic);
        staged.write(layout.pageFile(topic), renderTopicPage(layout, topic, converted.body));
        terms.push_back(std::move(converted.terms));
    }
    staged.write("index.html", renderIndexPage(layout));
    staged.write("search-index.js", renderSearchIndex(layout, terms));
    staged.write("search.js", kSearchScript);
    staged.write("preview.css", kStylesheet);
    staged.publish();
}

}  // namespace quillet::preview
