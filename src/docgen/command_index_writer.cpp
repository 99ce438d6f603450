#include "docgen/command_index_writer.h"

#include "docgen/reference_format.h"

namespace quillet {

bool writeCommandIndex(const DefinitionSet& definitions, const RunContext& /*context*/, OutputFile& out) {
    // Only the entries: the documentation project places them inside its own
    // table of contents. Names go in unescaped.
    for (const KeywordDef* record : definitions.keywords) {
        if (record->noDocumentation) continue;
        out << "    <TocEntry\r\n"
               "      Title=\"" << record->name << "\"\r\n"
               "      Link=\"" << reference::kContentPath << record->name << reference::kTopicSuffix << "\" />\r\n";
    }
    return true;
}

}  // namespace quillet
