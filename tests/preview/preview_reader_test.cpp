// The contents reader and the topic converter on small inputs, for the
// cases that quillet's own output never shows the golden tests.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "preview/contents_reader.h"
#include "preview/diagnostic.h"
#include "preview/site_layout.h"
#include "preview/topic_converter.h"

using namespace quillet::preview;

namespace {

std::string entry(const std::string& link) { return "<TocEntry Title=\"t\" Link=\"" + link + "\" />\r\n"; }

const std::string kFolder = "/Content/orrery_command_reference/";

struct ContentsCase {
    const char* what;
    std::string bytes;
    std::vector<std::string> names;  // empty: the reader refuses the bytes
};

TEST(PreviewContents, AcceptsTheTopicsOfTheFolderOnly) {
    const std::vector<ContentsCase> cases = {
        {"a folder below the topics", entry(kFolder + "a/b.html"), {"a/b"}},
        {"the empty name", entry(kFolder + ".html"), {""}},
        {"a repeated entry once", entry(kFolder + "b.html") + entry(kFolder + "a.html") + entry(kFolder + "b.html"),
         {"b", "a"}},
        {"an empty folder", entry(kFolder + "a//b.html"), {}},
        {"a folder '.'", entry(kFolder + "./b.html"), {}},
        {"another suffix", entry(kFolder + "a.htm"), {}},
        {"another folder", entry("/Content/other/a.html"), {}},
        {"a nested entry", "<TocEntry Title=\"a\" Link=\"" + kFolder + "a.html\">" + entry(kFolder + "b.html") +
                               "</TocEntry>",
         {}},
        {"text between entries", entry(kFolder + "a.html") + "stray", {}},
    };
    for (const ContentsCase& c : cases) {
        std::vector<std::string> names;
        try {
            for (const ContentsEntry& read : readContents(c.bytes, "Commands.fltoc")) names.push_back(read.name);
        } catch (const PreviewError&) {
            names.clear();
        }
        EXPECT_EQ(names, c.names) << c.what;
    }
}

struct TopicCase {
    const char* what;
    std::size_t topic;  // of the contents a, b, c
    std::string body;
    std::string converted;
    std::vector<std::string> terms;
};

TEST(PreviewTopic, ConvertsMadCapMarkUp) {
    const SiteLayout layout({{"a", "a", 0}, {"b", "b", 0}, {"c", "c", 0}});
    const std::vector<TopicCase> cases = {
        {"a placeholder leads to the neighbour", 1,
         "<span class=\"NavText\">&#9664; <MadCap:xref href=\"PREV_KEYWORD.html\">PREV_KEYWORD</MadCap:xref></span>",
         "<span class=\"NavText\">\u25c0 <a href=\"../topics/a.html\">a</a></span>", {}},
        {"the first topic has no previous one", 0,
         "<td><span class=\"NavText\">&#9664; <MadCap:xref href=\"PREV_KEYWORD.html\">x</MadCap:xref></span></td>",
         "<td></td>", {}},
        {"the last topic has no next one", 2, "<MadCap:xref href=\"NEXT_KEYWORD.html\">x</MadCap:xref>!", "!", {}},
        {"the contents link leaves the frame", 1,
         "<MadCap:xref class=\"NavLink\" href=\"orrery_command_referenceTOC.htm\">Contents</MadCap:xref>",
         "<a class=\"NavLink\" href=\"../index.html\" target=\"_top\">Contents</a>", {}},
        {"conditions become classes, concepts go", 1,
         "<MadCap:concept term=\"Orrery\"/><table class=\"NavLink\" MadCap:conditions=\"Default.ScreenOnly\"><tr/>"
         "</table><p MadCap:conditions=\"Default.PrintOnly\">p</p>",
         "<table class=\"NavLink screen-only\"><tr></tr></table><p class=\"print-only\">p</p>", {}},
        {"other MadCap elements keep their content", 1, "<MadCap:variable>v<b>w</b></MadCap:variable>", "v<b>w</b>",
         {}},
        {"a missing topic keeps the text, not the target", 1, "<a class=\"x\" href=\"gone.html\">gone <i>one</i></a>",
         "<a class=\"x\">gone <i>one</i></a>", {"gone one"}},
        {"texts and attributes are escaped, void elements stay open", 1,
         "<p title=\"a&quot;b&lt;\">x &amp; y<br/></p><![CDATA[<raw>]]>",
         "<p title=\"a&quot;b&lt;\">x &amp; y<br></p>&lt;raw&gt;", {}},
        {"option names and linked topics are terms", 1,
         "<dl><dt><i>beta</i></dt><dt> alpha\r\n one </dt></dl><a href=\"c.html\">see</a>",
         "<dl><dt><i>beta</i></dt><dt> alpha\n one </dt></dl><a href=\"../topics/c.html\">see</a>",
         {"alpha one", "beta", "c"}},
    };
    for (const TopicCase& c : cases) {
        const std::string topic = "<?xml version=\"1.0\"?>\r\n<html xmlns:MadCap=\"m\"><body>" + c.body + "</body></html>";
        const ConvertedTopic converted = convertTopic(topic, "t.html", layout, c.topic);
        EXPECT_EQ(converted.body, c.converted) << c.what;
        EXPECT_EQ(converted.terms, c.terms) << c.what;
    }
}

TEST(PreviewTopic, WalksAnyDepthWithoutRecursion) {
    const SiteLayout layout({{"a", "a", 0}});
    std::string topic = "<html><body>";
    for (int i = 0; i < 200000; ++i) topic += "<dt><i>";
    for (int i = 0; i < 200000; ++i) topic += "</i></dt>";
    topic += "</body></html>";
    EXPECT_EQ(convertTopic(topic, "t.html", layout, 0).body.size(), 200000u * 16);
}

}  // namespace
