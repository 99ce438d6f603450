#include "preview/site_pages.h"

#include "docgen/reference_format.h"
#include "preview/html_text.h"

namespace quillet::preview {

namespace {

// quillet's topics name the reference so on their contents links.
constexpr std::string_view kSiteTitle = reference::kManualTitle;

void appendHead(std::string& out, std::string_view title, std::string_view toTop, bool generatorMark) {
    out += "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n";
    out += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
    if (generatorMark) {
        out += kGeneratorMark;
        out += '\n';
    }
    out += "<title>";
    appendText(out, title);
    out += "</title>\n<link rel=\"stylesheet\" href=\"";
    out += toTop;
    out += "preview.css\">\n</head>\n";
}

std::string topicCount(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " topic" : " topics");
}

}  // namespace

const char* const kGeneratorMark = "<meta name=\"generator\" content=\"quillet-preview\">";

std::string renderTopicPage(const SiteLayout& layout, std::size_t topic, const std::string& body) {
    std::string out;
    out.reserve(body.size() + 512);
    std::string title = layout.entry(topic).title;
    title += " - ";
    title += kSiteTitle;
    appendHead(out, title, layout.toTop(topic), false);
    // The blanks around the dropped head and concepts go too.
    const std::size_t first = body.find_first_not_of(" \t\n");
    const std::size_t last = body.find_last_not_of(" \t\n");
    out += "<body class=\"topic\">\n<main>\n";
    if (first != std::string::npos) out.append(body, first, last + 1 - first);
    out += "\n</main>\n</body>\n</html>\n";
    return out;
}

std::string renderIndexPage(const SiteLayout& layout) {
    std::string out;
    appendHead(out, kSiteTitle, "", true);
    out += "<body class=\"contents\">\n<nav class=\"sidebar\" aria-label=\"Contents\">\n<h1>";
    appendText(out, kSiteTitle);
    out += "</h1>\n<input id=\"search\" type=\"search\" placeholder=\"Keyword, alias or option\" "
           "aria-label=\"Search the contents\" autocomplete=\"off\" spellcheck=\"false\">\n";
    out += "<p id=\"matches\" class=\"matches\" aria-live=\"polite\">";
    out += topicCount(layout.size());
    out += "</p>\n";
    out += "<ol id=\"entries\">\n";
    for (std::size_t topic = 0; topic < layout.size(); ++topic) {
        out += "<li><a href=\"";
        appendAttribute(out, layout.topicHref("", topic));
        out += "\">";
        appendText(out, layout.entry(topic).title);
        out += "</a></li>\n";
    }
    out += "</ol>\n<ol id=\"found\" hidden></ol>\n</nav>\n";
    // Beside the contents the first topic, and whichever is chosen after it;
    // on a narrow screen the frame is hidden and the links lead to the pages.
    if (layout.size() > 0) {
        out += "<main class=\"viewer\"><iframe name=\"topic\" title=\"Topic\" src=\"";
        appendAttribute(out, layout.topicHref("", 0));
        out += "\"></iframe></main>\n";
    }
    out += "<script src=\"search-index.js\"></script>\n<script src=\"search.js\"></script>\n</body>\n</html>\n";
    return out;
}

std::string renderSearchIndex(const SiteLayout& layout, const std::vector<std::vector<std::string>>& terms) {
    std::string out = "var SEARCH_INDEX = [\n";
    for (std::size_t topic = 0; topic < layout.size(); ++topic) {
        std::string joined = layout.entry(topic).title;
        for (const std::string& term : terms[topic]) {
            joined += '\n';
            joined += term;
        }
        appendJsString(out, joined);
        out += ",\n";
    }
    out += "];\n";
    return out;
}

}  // namespace quillet::preview
