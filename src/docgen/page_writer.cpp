#include "docgen/page_writer.h"

#include <string>
#include <string_view>

#include "docgen/page_body.h"
#include "docgen/page_frame.h"
#include "docgen/reference_format.h"
#include "docgen/text_escape.h"

namespace quillet {

namespace {

void writeAliasTopicBody(OutputFile& out, const KeywordDef& alias) {
    out << "<p>This is a standard alias for ";
    writeAliasLinks(out, alias);
    out << ".</p>\r\n";
}

bool writeKeywordTopicBody(const DefinitionSet& definitions, const RunContext& context, const KeywordDef& keyword,
                           OutputFile& out) {
    out << "<p>" << escapeText(keyword.description) << "</p>\r\n";
    if (!writeSyntax(definitions, context, keyword, out)) {
        context.report.error("Error writing keyword syntax for %s", keyword.name.data());
        return false;
    }
    out << "</p>\r\n";
    if (!writeOptionDetails(definitions, context, keyword, out)) {
        context.report.error("Error writing option details for %s", keyword.name.data());
        return false;
    }
    return true;
}

}  // namespace

bool writeTopic(const DefinitionSet& definitions, const RunContext& context, const KeywordDef& record,
                OutputFile& out) {
    // The title and heading take the name raw; only the body escapes.
    writePageHead(out, record.name);
    writeNavigationTable(out);
    out << "<h1 class=\"title\">" << record.name << "</h1>\r\n";
    if (record.isAlias) {
        writeAliasTopicBody(out, record);
    } else if (!writeKeywordTopicBody(definitions, context, record, out)) {
        return false;
    }
    writeNavigationTable(out);
    writePageFoot(out);
    return true;
}

bool writeCommandPages(const DefinitionSet& definitions, const RunContext& context) {
    // One buffer serves every topic; each is closed when the next is opened.
    OutputFile out;
    std::string fileName;
    for (const KeywordDef* record : definitions.keywords) {
        if (record->noDocumentation) continue;
        fileName.assign(std::string_view(record->name)).append(reference::kTopicSuffix);
        if (!openOutputFile(out, context, fileName) || !writeTopic(definitions, context, *record, out)) return false;
    }
    return true;
}

}  // namespace quillet
