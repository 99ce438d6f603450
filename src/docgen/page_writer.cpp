#include "docgen/page_writer.h"

#include <fstream>
#include <locale>
#include <string>

#include "docgen/page_body.h"
#include "docgen/page_frame.h"
#include "docgen/text_escape.h"
#include "nqerr.h"

namespace quillet {

namespace {

void writeAliasTopicBody(std::ostream& out, const KeywordDef& alias) {
    out << "<p>This is a standard alias for ";
    writeAliasLinks(out, alias);
    out << ".</p>\r\n";
}

bool writeKeywordTopicBody(std::ostream& out, const KeywordDef& keyword, const DefinitionSet& definitions,
                           const RunContext& context) {
    out << "<p>" << escapeText(keyword.description) << "</p>\r\n";
    if (!writeSyntax(out, keyword, definitions, context)) {
        context.report.error("Error writing keyword syntax for %s", keyword.name.data());
        return false;
    }
    out << "</p>\r\n";
    if (!writeOptionDetails(out, keyword, definitions, context)) {
        context.report.error("Error writing option details for %s", keyword.name.data());
        return false;
    }
    return true;
}

// A failed topic keeps what was written so far.
bool writeTopic(const KeywordDef& record, const DefinitionSet& definitions, const RunContext& context) {
    const std::string fileName = std::string(record.name.view()) + ".html";
    std::ofstream out(context.outputPath(fileName), std::ios::binary);
    if (!out) {
        context.report.error("Error opening file: %s\n", fileName.c_str());
        return false;
    }
    out.imbue(std::locale::classic());
    // The title and heading take the name raw; only the body escapes.
    writePageHead(out, record.name);
    writeNavigationTable(out);
    out << "<h1 class=\"title\">" << record.name << "</h1>\r\n";
    if (record.isAlias) {
        writeAliasTopicBody(out, record);
    } else if (!writeKeywordTopicBody(out, record, definitions, context)) {
        return false;
    }
    writeNavigationTable(out);
    writePageFoot(out);
    return true;
}

}  // namespace

bool writeCommandPages(const DefinitionSet& definitions, const RunContext& context) {
    for (const KeywordDef* record : definitions.keywords) {
        if (record->noDocumentation) continue;
        if (!writeTopic(*record, definitions, context)) return false;
    }
    return true;
}

}  // namespace quillet
