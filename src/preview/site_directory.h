#pragma once

#include <filesystem>
#include <string_view>

namespace quillet::preview {

// The site's directory, built as a hidden sibling of its place and renamed
// into it by publish(), so that the place holds either the earlier site or
// the new one whole. An existing directory is replaced only when it is empty
// or a site that quillet-preview wrote; anything else is refused at once.
// Errors throw PreviewError naming the site's path.
class StagedSite {
public:
    explicit StagedSite(const std::filesystem::path& site);
    ~StagedSite();
    StagedSite(const StagedSite&) = delete;
    StagedSite& operator=(const StagedSite&) = delete;

    // Writes a file at `relative` below the site, making its folders.
    void write(const std::filesystem::path& relative, std::string_view bytes);
    void publish();

private:
    std::filesystem::path site_;     // as given, for messages
    std::filesystem::path place_;    // absolute, without trailing separator
    std::filesystem::path staging_;  // empty once published
    std::filesystem::path lastFolder_;
};

}  // namespace quillet::preview
