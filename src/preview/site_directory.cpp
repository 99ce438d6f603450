#include "preview/site_directory.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "preview/diagnostic.h"
#include "preview/file_io.h"
#include "preview/site_pages.h"

namespace fs = std::filesystem;

namespace quillet::preview {

namespace {

// A fresh empty directory beside `place`, named after it with `purpose`.
fs::path makeSibling(const fs::path& place, const char* purpose) {
    std::string name = ".";
    name += place.filename().string();
    name += purpose;
    name += "-XXXXXX";
    std::string pattern = (place.parent_path() / name).string();
    if (mkdtemp(pattern.data()) == nullptr) return {};
    return pattern;
}

bool writtenByPreview(const fs::path& place) {
    std::string index;
    if (readWholeFile(place / "index.html", index) != 0) return false;
    return index.find(kGeneratorMark) != std::string::npos;
}

}  // namespace

StagedSite::StagedSite(const fs::path& site) : site_(site) {
    std::error_code error;
    place_ = fs::absolute(site, error).lexically_normal();
    if (!place_.has_filename()) place_ = place_.parent_path();
    if (error || place_ == place_.root_path())
        throw PreviewError(site_.string(), "cannot be the site's directory");

    const fs::file_status status = fs::status(place_, error);
    if (fs::exists(status)) {
        if (!fs::is_directory(status)) throw PreviewError(site_.string(), "exists and is not a directory");
        if (!fs::is_empty(place_, error) && !writtenByPreview(place_))
            throw PreviewError(site_.string(),
                               "holds files that are not a site written by quillet-preview; not replacing it");
    }

    staging_ = makeSibling(place_, ".quillet-preview");
    if (staging_.empty())
        throw PreviewError(site_.string(), std::string("cannot make a directory beside it: ") + std::strerror(errno));
    // mkdtemp makes it private; the site gets the permissions of a new
    // directory.
    const mode_t mask = umask(0);
    umask(mask);
    chmod(staging_.c_str(), 0777 & ~mask);
}

StagedSite::~StagedSite() {
    std::error_code ignored;
    if (!staging_.empty()) fs::remove_all(staging_, ignored);
}

void StagedSite::write(const fs::path& relative, std::string_view bytes) {
    const fs::path file = staging_ / relative;
    const fs::path folder = file.parent_path();
    if (folder != lastFolder_) {
        std::error_code error;
        fs::create_directories(folder, error);
        if (error)
            throw PreviewError((site_ / relative.parent_path()).string(), std::string("cannot make the folder: ") + error.message());
        lastFolder_ = folder;
    }
    if (const int error = writeWholeFile(file, bytes))
        throw PreviewError((site_ / relative).string(), std::string("cannot write: ") + std::strerror(error));
}

void StagedSite::publish() {
    fs::path earlier;
    if (fs::exists(place_)) {
        earlier = makeSibling(place_, ".quillet-preview-old");
        int error = earlier.empty() ? errno : 0;
        if (error == 0 && std::rename(place_.c_str(), earlier.c_str()) != 0) {
            error = errno;
            std::error_code ignored;
            fs::remove(earlier, ignored);
        }
        if (error != 0)
            throw PreviewError(site_.string(), std::string("cannot move the earlier site aside: ") +
                                                   std::strerror(error));
    }
    if (std::rename(staging_.c_str(), place_.c_str()) != 0) {
        const int error = errno;
        if (!earlier.empty()) std::rename(earlier.c_str(), place_.c_str());
        throw PreviewError(site_.string(), std::string("cannot move the new site into place: ") + std::strerror(error));
    }
    staging_.clear();
    std::error_code ignored;
    if (!earlier.empty()) fs::remove_all(earlier, ignored);
}

}  // namespace quillet::preview
