#include "docgen/page_frame.h"

#include <algorithm>
#include <vector>

#include "docgen/reference_format.h"
#include "docgen/text_escape.h"

namespace quillet {

void writePageHead(OutputFile& out, std::string_view title) {
    out << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
           "<html xmlns:MadCap=\"http://www.madcapsoftware.com/Schemas/MadCap.xsd\" >\r\n"
           "  <head>\r\n"
           "    <title>"
        << title
        << "</title>\r\n"
           "    <link href=\"../Resources/Stylesheets/docs.css\" rel=\"stylesheet\" />\r\n"
           "  </head>\r\n"
           "  <body>\r\n"
           "  <MadCap:concept term=\"Command Reference\"/>\r\n"
           "  <MadCap:concept term=\"Orrery\"/>\r\n";
}

void writeNavigationTable(OutputFile& out) {
    out << "    <table class=\"NavLink\" MadCap:conditions=\"Default.ScreenOnly\">\r\n"
           "      <tr class=\"NavLink\">\r\n"
           "        <td class=\"NavLeft\">\r\n"
           "          <span class=\"NavText\">&#9664; <MadCap:xref class=\"NavLink\" href=\""
        << reference::kPreviousLink << "\">" << reference::kPreviousPlaceholder
        << "</MadCap:xref></span>\r\n"
           "        </td>\r\n"
           "        <td class=\"NavCenter\">\r\n"
           "          <span class=\"NavText\"><MadCap:xref class=\"NavLink\" href=\""
        << reference::kContentsLink << "\">" << reference::kManualTitle
        << "</MadCap:xref></span>\r\n"
           "        </td>\r\n"
           "        <td class=\"NavRight\">\r\n"
           "          <span class=\"NavText\"><MadCap:xref class=\"NavLink\" href=\""
        << reference::kNextLink << "\">" << reference::kNextPlaceholder
        << "</MadCap:xref> &#9654;</span>\r\n"
           "        </td>\r\n"
           "      </tr>\r\n"
           "    </table>\r\n";
}

void writePageFoot(OutputFile& out) { out << "  </body>\r\n</html>\r\n"; }

void writeAliasLinks(OutputFile& out, const KeywordDef& record) {
    // Each list is written only in its own record's topic, so ordering a copy
    // keeps the model read-only without changing any output.
    std::vector<const KeywordDef*> sorted(record.aliases.begin(), record.aliases.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const KeywordDef* a, const KeywordDef* b) {
                         return std::string_view(a->name) < std::string_view(b->name);
                     });
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        const std::string name = escapeText(sorted[i]->name);
        out << "<a href=\"" << name << reference::kTopicSuffix << "\">" << name << "</a>";
        if (i + 1 < sorted.size()) out << ", \r\n";
    }
}

}  // namespace quillet
