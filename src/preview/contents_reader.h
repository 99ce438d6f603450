#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillet::preview {

// One entry of the table of contents that quillet -html writes.
struct ContentsEntry {
    std::string title;   // shown in the contents and on the neighbours' links
    std::string name;    // the topic's file below the reference folder, without ".html"
    std::size_t offset;  // of the entry's "<", for messages about its topic
};

// Reads the TocEntry elements of Commands.fltoc (a fragment without root
// element) in their order. An entry naming the same topic as an earlier one
// is dropped: quillet lists a repeated alias twice, and both entries lead to
// one file. Throws PreviewError, placed in `file`, when the bytes are not
// well-formed or an entry is not one that quillet writes.
std::vector<ContentsEntry> readContents(std::string_view bytes, const std::string& file);

}  // namespace quillet::preview
