#include "nqerr_fixture.h"

#include <set>

namespace {

using HandlerTest = NqerrTest;

TEST_F(HandlerTest, ThresholdLevelNamesAndMaximumLevel) {
    MemoryStream out;
    int handle = handlerInto(out, NQERR_INFO);
    unsigned int maxLevel = 0;

    EXPECT_EQ(nqerr_throw(handle, NQERR_DEBUG, "below %d\n", 1), 1);
    nqerr_maxlevel(handle, &maxLevel);
    EXPECT_EQ(maxLevel, 2u) << "a filtered message still counts";
    EXPECT_EQ(nqerr_throw(handle, 7, "odd\n"), 1);
    nqerr_maxlevel(handle, &maxLevel);
    EXPECT_EQ(maxLevel, 2u) << "level 7 never raises the maximum";
    for (unsigned int level = NQERR_INFO; level <= 8; ++level) nqerr_throw(handle, level, "at %u\n", level);
    nqerr_level(handle, NQERR_BUMMER);
    for (unsigned int level = NQERR_BUMMER; level <= NQERR_DEBUG; ++level) nqerr_throw(handle, level, "%u ", level);
    EXPECT_EQ(out.text(), "LEVEL UNDEFINED odd\nINFO at 3\nWARNING at 4\nFATAL at 5\nOFF at 6\n"
                          "LEVEL UNDEFINED at 7\nLEVEL UNDEFINED at 8\nBUMMER 0 OK 1 DEBUG 2 ");
    nqerr_maxlevel(handle, &maxLevel);
    EXPECT_EQ(maxLevel, 6u);
    nqerr_errclear(handle);
    nqerr_maxlevel(handle, &maxLevel);
    EXPECT_EQ(maxLevel, 1u);
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
    int handle = -1, unit = 6, status = -1, invalid = 99, printing = -1;
    nqerr_new(&handle);
    nqerr_queue_on(handle, 1);
    nqerr_throw(handle, NQERR_FATAL, "no output yet\n");
    nqerrf_file_(&handle, &unit, &status);
    EXPECT_EQ(status, 1);
    nqerr_throw(handle, NQERR_FATAL, "fortran unit\n");
    nqerrf_file_(&invalid, &unit, &status);
    EXPECT_EQ(status, 0);

    nqerr_file(handle, out.stream);
    nqerr_window(handle, [](const char* message) { seen += message; return seen.size() > 20 ? -1 : 0; });
    nqerr_suppress_print(handle);
    nqerr_print_state(handle, &printing);
    EXPECT_EQ(printing, 0);
    nqerr_throw(handle, NQERR_FATAL, "hidden\n");
    nqerr_restore_print(handle);
    nqerr_print_state(handle, &printing);
    EXPECT_EQ(printing, 1);
    EXPECT_EQ(nqerr_throw(handle, NQERR_FATAL, "shown\n"), 1);
    EXPECT_EQ(nqerr_throw(handle, NQERR_FATAL, "refused\n"), 0) << "a callback result of -1 fails the throw";

    EXPECT_EQ(out.text(), "FATAL shown\nFATAL refused\n");
    EXPECT_EQ(seen, "FATAL shown\nFATAL refused\n");
    EXPECT_EQ(queued(handle), "FATAL no output yet\nFATAL fortran unit\nFATAL hidden\nFATAL shown\n");
}

TEST_F(HandlerTest, QueueKeepsWholeMessagesUntilClearedOrSwitchedOff) {
    int handle = -1;
    nqerr_new(&handle);
    char* untouched = nullptr;
    EXPECT_EQ(nqerr_queue_get(handle, &untouched), 0);
    EXPECT_EQ(untouched, nullptr);

    nqerr_queue_on(handle, 1);
    nqerr_prefix(handle, "[q] ");
    EXPECT_EQ(queued(handle), "");
    nqerr_throw(handle, NQERR_WARNING, "one\n");
    nqerr_throw(handle, NQERR_DEBUG, "filtered\n");
    nqerr_throw(handle, NQERR_FATAL, "two\n");
    EXPECT_EQ(queued(handle), "[q] WARNING one\n[q] FATAL two\n");
    EXPECT_EQ(queued(handle), "[q] WARNING one\n[q] FATAL two\n") << "reading keeps the queue";
    nqerr_errclear(handle);
    EXPECT_EQ(queued(handle), "");

    nqerr_throw(handle, NQERR_FATAL, "three\n");
    nqerr_queue_on(handle, 0);
    EXPECT_EQ(queued(handle), "<off>");
    nqerr_queue_on(handle, 1);
    EXPECT_EQ(queued(handle), "") << "switching the queue off discards it";
}

TEST_F(HandlerTest, PrefixOf511IsTakenAndLongerLeavesNone) {
    MemoryStream out;
    int handle = handlerInto(out);
    std::string prefix511(511, 'p');
    EXPECT_EQ(nqerr_prefix(handle, prefix511.c_str()), 1);
    nqerr_throw(handle, NQERR_WARNING, "a\n");
    EXPECT_EQ(nqerr_prefix(handle, (prefix511 + "q").c_str()), 0);
    nqerr_throw(handle, NQERR_WARNING, "b\n");
    EXPECT_EQ(out.text(), prefix511 + "WARNING a\nWARNING b\n");
}

TEST_F(HandlerTest, ReturnCodesRotateThroughTenBuffers) {
    const char* expected[] = {"NQERR_BUMMER", "NQERR_OK", "NQERR_DEBUG", "NQERR_INFO", "NQERR_WARNING",
                              "NQERR_FATAL", "NQERR_OFF", "NQERR_LEVEL UNDEFINED", "(bogus NQERR level)",
                              "(bogus NQERR level)"};
    std::set<const char*> buffers;
    const char* first = nqerr_return_code(0);
    for (unsigned int level = 0; level <= 9; ++level) {
        const char* code = level == 0 ? first : nqerr_return_code(level);
        EXPECT_STREQ(code, expected[level]);
        buffers.insert(code);
    }
    EXPECT_EQ(buffers.size(), 10u);
    EXPECT_STREQ(first, "NQERR_BUMMER") << "intact for the next nine calls";
    EXPECT_EQ(nqerr_return_code(5), first);
    EXPECT_STREQ(first, "NQERR_FATAL");
}

}  // namespace
