#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "nqerr.h"
#include "nqerr_capture.h"

namespace {

struct MemoryStream {
    char* data = nullptr;
    size_t size = 0;
    FILE* stream = open_memstream(&data, &size);

    ~MemoryStream() {
        std::fclose(stream);
        std::free(data);
    }
    std::string text() {
        std::fflush(stream);
        return std::string(data, size);
    }
};

// Leaves the process-wide library as it found it.
class HandlerTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(nqerr_initialize(), 1); }
    void TearDown() override {
        while (nqerr_refcount() > 0) nqerr_terminate();
        nqerr_file(NQERR_DEFAULT_HANDLER, stderr);  // the default handler outlives termination
    }
    static int handlerInto(MemoryStream& out, unsigned int level = NQERR_WARNING) {
        int handle = -1;
        nqerr_new(&handle);
        nqerr_file(handle, out.stream);
        nqerr_level(handle, level);
        return handle;
    }
};

// The driver's two handlers are the first rows: errors print from DEBUG up,
// progress on the debug handler (threshold OFF) is counted but never shown.
TEST_F(HandlerTest, PrintsFromItsThresholdAsPrefixLevelNameAndText) {
    const struct {
        unsigned int threshold, level;
        const char* prefix;
        const char* printed;
        unsigned int maxLevel;  // 7 and above never count
    } rows[] = {
        {NQERR_DEBUG, NQERR_FATAL, "", "FATAL x\n", 5},  {NQERR_DEBUG, NQERR_DEBUG, "", "DEBUG x\n", 2},
        {NQERR_OFF, NQERR_DEBUG, "", "", 2},              {NQERR_OFF, NQERR_OFF, "[p] ", "[p] OFF x\n", 6},
        {NQERR_INFO, NQERR_INFO, "", "INFO x\n", 3},      {NQERR_INFO, NQERR_WARNING, "", "WARNING x\n", 4},
        {NQERR_BUMMER, NQERR_BUMMER, "", "BUMMER x\n", 1}, {NQERR_BUMMER, NQERR_OK, "", "OK x\n", 1},
        {NQERR_WARNING, 7, "", "LEVEL UNDEFINED x\n", 1}, {NQERR_WARNING, 12, "", "LEVEL UNDEFINED x\n", 1},
    };
    for (const auto& row : rows) {
        MemoryStream out;
        const int handle = handlerInto(out, row.threshold);
        if (*row.prefix) nqerr_prefix(handle, row.prefix);
        unsigned int maxLevel = 0;
        EXPECT_EQ(nqerr_throw(handle, row.level, "%s\n", "x"), 1);
        nqerr_maxlevel(handle, &maxLevel);
        EXPECT_EQ(out.text(), row.printed) << row.level;
        EXPECT_EQ(maxLevel, row.maxLevel) << row.level;
    }
}

TEST_F(HandlerTest, InvalidHandlesFail) {
    int (*const calls[])(int) = {
        [](int h) { return nqerr_level(h, NQERR_FATAL); },     [](int h) { return nqerr_file(h, stderr); },
        [](int h) { return nqerr_throw(h, NQERR_FATAL, "x"); }, [](int h) { return nqerr_queue_on(h, 1); },
        [](int h) { return nqerr_prefix(h, "p"); },             [](int h) { return nqerr_errclear(h); },
    };
    for (int handle : {-2, 1, 99})  // 0 is the deprecation handler
        for (auto call : calls) EXPECT_EQ(call(handle), 0) << handle;
    nqerr_terminate();
    int handle = 7;
    EXPECT_EQ(nqerr_new(&handle), 0) << "refused when not initialised";
    EXPECT_EQ(handle, -1);
}

// The driver's handlers are 1 and 2 in every run of a process.
TEST_F(HandlerTest, InitialisationsNestAndHandlesFollowTheDeprecationHandler) {
    for (int lifetime = 0; lifetime < 2; ++lifetime) {
        int deprecation = -1, debug = -1, error = -1;
        unsigned int level = 0;
        nqerr_get_named_handler("DEPRECATION", &deprecation);
        EXPECT_EQ(nqerr_new(&debug) + nqerr_new(&error), 2);
        EXPECT_TRUE(deprecation == 0 && debug == 1 && error == 2) << deprecation << debug << error;
        ASSERT_EQ(nqerr_initialize(), 1);
        EXPECT_EQ(nqerr_terminate(), 1);
        EXPECT_EQ(nqerr_get_level(error, &level), 1) << "an inner terminate frees nothing";
        EXPECT_EQ(nqerr_terminate(), 1);
        EXPECT_EQ(nqerr_get_level(error, &level), 0);
        ASSERT_EQ(nqerr_initialize(), 1);
    }
}

// The queue holds whole printed-level messages, prefix and level name
// included; a capture takes them over for a scope and gives them back.
TEST_F(HandlerTest, QueueKeepsMessagesUntilClearedAndCaptureRestoresIt) {
    EXPECT_THROW(vellum::nqlibs::CaptureNQErr(9), std::out_of_range);
    MemoryStream out;
    const int handle = handlerInto(out);
    char* text = nullptr;
    EXPECT_EQ(nqerr_queue_get(handle, &text), 0) << "the queue is off";
    nqerr_queue_on(handle, 1);
    nqerr_prefix(handle, "[q] ");
    nqerr_throw(handle, NQERR_DEBUG, "filtered\n");
    nqerr_throw(handle, NQERR_FATAL, "one\n");
    {
        vellum::nqlibs::CaptureNQErr capture(handle);
        nqerr_throw(handle, NQERR_FATAL, "two\n");
        EXPECT_EQ(capture.getMessagesOrDefault("none"), "[q] FATAL two\n");
        EXPECT_EQ(capture.getMessagesOrDefault("none"), "none") << "reading cleared it";
        nqerr_throw(handle, NQERR_FATAL, "three\n");
        EXPECT_EQ(capture.addMessagesAsDetails("Failed."), "Failed.\nDetails:\n[q] FATAL three\n");
        nqerr_throw(handle, NQERR_FATAL, "four\n");
        capture.restore();
        capture.restore();
        EXPECT_EQ(capture.getMessages(), "[q] FATAL four\n");
    }
    nqerr_throw(handle, NQERR_FATAL, "five\n");
    EXPECT_EQ(out.text(), "[q] FATAL one\n[q] FATAL five\n");
    for (const char* queued : {"[q] FATAL one\n[q] FATAL five\n", ""}) {
        ASSERT_EQ(nqerr_queue_get(handle, &text), 1);
        EXPECT_STREQ(text, queued);
        std::free(text);
        nqerr_errclear(handle);
    }
}

TEST_F(HandlerTest, LongMessagesAreCutToTheBuffer) {
    MemoryStream out;
    EXPECT_EQ(nqerr_throw(handlerInto(out), NQERR_FATAL, "%s", std::string(20000, 'x').c_str()), 1);
    EXPECT_EQ(out.text(), "FATAL " + std::string(10239 - 6, 'x'));
}

}  // namespace
