#include <gtest/gtest.h>

#include <cstring>

#include "docgen/path_localize.h"
#include "docgen/text_escape.h"

using namespace quillet;

namespace {

TEST(ReplaceAll, ReplacesLeftToRightWithoutRescanningInsertedText) {
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(replaceAll("aa", "a", "aa"), "aaaa");
    EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaceAll("xax", "x", ""), "a");
}

TEST(EscapeText, EscapesMarkUpAndTurnsDoubledMarksIntoBreaksAndQuotes) {
    EXPECT_EQ(escapeText("a<b"), "a&lt;b");
    EXPECT_EQ(escapeText("a>b"), "a&gt;b");
    EXPECT_EQ(escapeText("&&"), "&amp;&amp;");
    EXPECT_EQ(escapeText("'''"), "\"'");
    EXPECT_EQ(escapeText("```"), "\"`");
    EXPECT_EQ(escapeText("\\\\\\\\"), "<br/><br/>");
    EXPECT_EQ(escapeText("\\\\\\"), "<br/>\\");
    EXPECT_EQ(escapeText("' ` \\ \""), "' ` \\ \"");
    // Entities are made once, and the inserted line break stays mark-up.
    EXPECT_EQ(escapeText("&lt;\\\\<"), "&amp;lt;<br/>&lt;");
}

TEST(PathLocalize, TurnsBackslashesIntoSlashesUnlessEmptyOrTooSmall) {
    char path[16] = "a\\b\\\\c";
    EXPECT_EQ(nqfile_path_localize(path, sizeof path), 0);
    EXPECT_STREQ(path, "a/b//c");

    char empty[4] = "";
    EXPECT_EQ(nqfile_path_localize(empty, sizeof empty), -1);

    char tiny[4] = "\\";
    EXPECT_EQ(nqfile_path_localize(tiny, 1), -1);
    EXPECT_STREQ(tiny, "\\");
}

}  // namespace
