#include "nqerr_fixture.h"

#include <cstring>
#include <set>

namespace {

using HandlerTest = NqerrTest;

TEST_F(HandlerTest, ThresholdLevelNamesAndMaximumLevel) {
    MemoryStream out;
    int handle = handlerInto(out, NQERR_INFO);
    unsigned int maxLevel = 0;

    EXPECT_EQ(nqerr_throw(handle, NQERR_DEBUG, "below %d\n", 1), 1);
    ASSERT_EQ(nqerr_maxlevel(handle, &maxLevel), 1);
    EXPECT_EQ(maxLevel, 2u) << "a filtered message still counts";
    EXPECT_EQ(nqerr_throw(handle, 7, "odd\n"), 1);
    nqerr_maxlevel(handle, &maxLevel);
    EXPECT_EQ(maxLevel, 2u) << "level 7 never raises the maximum";
    for (unsigned int level = NQERR_INFO; level <= 8; ++level) nqerr_throw(handle, level, "at %u\n", level);
    EXPECT_EQ(out.text(), "LEVEL UNDEFINED odd\nINFO at 3\nWARNING at 4\nFATAL at 5\nOFF at 6\n"
                          "LEVEL UNDEFINED at 7\nLEVEL UNDEFINED at 8\n");
    nqerr_maxlevel(handle, &maxLevel);
    EXPECT_EQ(maxLevel, 6u);

    nqerr_errclear(handle);
    nqerr_maxlevel(handle, &maxLevel);
    EXPECT_EQ(maxLevel, 1u);

    MemoryStream low;
    nqerr_file(handle, low.stream);
    nqerr_level(handle, NQERR_BUMMER);
    nqerr_throw(handle, NQERR_BUMMER, "b ");
    nqerr_throw(handle, NQERR_OK, "o ");
    nqerr_throw(handle, NQERR_DEBUG, "d");
    EXPECT_EQ(low.text(), "BUMMER b OK o DEBUG d");
}

TEST_F(HandlerTest, MessageIsCutToTheBuffer) {
    MemoryStream out;
    int handle = handlerInto(out);
    nqerr_prefix(handle, "P: ");
    std::string longText(20000, 'x');
    EXPECT_EQ(nqerr_throw(handle, NQERR_FATAL, "%s", longText.c_str()), 1);
    EXPECT_EQ(out.text(), "P: FATAL " + std::string(10239 - 9, 'x'));
}

TEST_F(HandlerTest, OutputModesSuppressionAndCallback) {
    static std::string seen;
    seen.clear();
    MemoryStream out;
    int handle = -1;
    nqerr_new(&handle);
    nqerr_queue_on(handle, 1);
    EXPECT_EQ(nqerr_throw(handle, NQERR_FATAL, "no output yet\n"), 1);

    int unit = 6, status = -1;
    nqerrf_file_(&handle, &unit, &status);
    EXPECT_EQ(status, 1);
    EXPECT_EQ(nqerr_throw(handle, NQERR_FATAL, "fortran unit\n"), 1);
    int invalid = 99;
    nqerrf_file_(&invalid, &unit, &status);
    EXPECT_EQ(status, 0);

    nqerr_file(handle, out.stream);
    nqerr_window(handle, [](const char* message) { seen += message; return seen.size() > 20 ? -1 : 0; });
    nqerr_suppress_print(handle);
    int state = -1;
    nqerr_print_state(handle, &state);
    EXPECT_EQ(state, 0);
    EXPECT_EQ(nqerr_throw(handle, NQERR_FATAL, "hidden\n"), 1);
    nqerr_restore_print(handle);
    nqerr_print_state(handle, &state);
    EXPECT_EQ(state, 1);
    EXPECT_EQ(nqerr_throw(handle, NQERR_FATAL, "shown\n"), 1);
    EXPECT_EQ(nqerr_throw(handle, NQERR_FATAL, "refused\n"), 0) << "a callback result of -1 fails the throw";

    EXPECT_EQ(out.text(), "FATAL shown\nFATAL refused\n");
    EXPECT_EQ(seen, "FATAL shown\nFATAL refused\n");
    char* queued = nullptr;
    ASSERT_EQ(nqerr_queue_get(handle, &queued), 1);
    EXPECT_STREQ(queued, "FATAL no output yet\nFATAL fortran unit\nFATAL hidden\nFATAL shown\n");
    std::free(queued);
}

TEST_F(HandlerTest, QueueKeepsWholeMessagesUntilClearedOrSwitchedOff) {
    int handle = -1;
    nqerr_new(&handle);
    char* text = const_cast<char*>("untouched");
    EXPECT_EQ(nqerr_queue_get(handle, &text), 0);
    EXPECT_STREQ(text, "untouched");

    nqerr_queue_on(handle, 1);
    nqerr_prefix(handle, "[q] ");
    ASSERT_EQ(nqerr_queue_get(handle, &text), 1);
    EXPECT_STREQ(text, "");
    std::free(text);
    nqerr_throw(handle, NQERR_WARNING, "one\n");
    nqerr_throw(handle, NQERR_DEBUG, "filtered\n");
    nqerr_throw(handle, NQERR_FATAL, "two\n");
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(nqerr_queue_get(handle, &text), 1);
        EXPECT_STREQ(text, "[q] WARNING one\n[q] FATAL two\n");
        std::free(text);
    }
    nqerr_errclear(handle);
    ASSERT_EQ(nqerr_queue_get(handle, &text), 1);
    EXPECT_STREQ(text, "");
    std::free(text);

    nqerr_throw(handle, NQERR_FATAL, "three\n");
    nqerr_queue_on(handle, 0);
    int on = -1;
    nqerr_get_queue_on(handle, &on);
    EXPECT_EQ(on, 0);
    nqerr_queue_on(handle, 1);
    ASSERT_EQ(nqerr_queue_get(handle, &text), 1);
    EXPECT_STREQ(text, "") << "switching the queue off discards it";
    std::free(text);
}

TEST_F(HandlerTest, PrefixOf511IsTakenAndLongerLeavesNone) {
    MemoryStream out;
    int handle = handlerInto(out);
    std::string prefix511(511, 'p');
    EXPECT_EQ(nqerr_prefix(handle, prefix511.c_str()), 1);
    nqerr_throw(handle, NQERR_WARNING, "a\n");
    EXPECT_EQ(nqerr_prefix(handle, (prefix511 + "q").c_str()), 0);
    nqerr_throw(handle, NQERR_WARNING, "b\n");
    EXPECT_EQ(nqerr_prefix(handle, nullptr), 0);
    EXPECT_EQ(out.text(), prefix511 + "WARNING a\nWARNING b\n");
}

TEST_F(HandlerTest, ReturnCodesRotateThroughTenBuffers) {
    const char* first = nqerr_return_code(0);
    EXPECT_STREQ(first, "NQERR_BUMMER");
    std::set<const char*> buffers{first};
    const char* expected[] = {"NQERR_OK", "NQERR_DEBUG", "NQERR_INFO", "NQERR_WARNING", "NQERR_FATAL",
                              "NQERR_OFF", "NQERR_LEVEL UNDEFINED", "(bogus NQERR level)", "(bogus NQERR level)"};
    for (unsigned int level = 1; level <= 9; ++level) {
        const char* code = nqerr_return_code(level);
        EXPECT_STREQ(code, expected[level - 1]);
        buffers.insert(code);
    }
    EXPECT_EQ(buffers.size(), 10u);
    EXPECT_STREQ(first, "NQERR_BUMMER") << "intact for the next nine calls";
    EXPECT_EQ(nqerr_return_code(5), first);
    EXPECT_STREQ(first, "NQERR_FATAL");
}

}  // namespace
