#include "nqerr_capture.h"

#include "nqerr_fixture.h"

#include <stdexcept>

namespace {

using CaptureTest = NqerrTest;
using vellum::nqlibs::CaptureNQErr;

TEST_F(CaptureTest, InvalidHandleThrows) {
    try {
        CaptureNQErr capture(7);
        FAIL() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "Invalid nqerr handle: 7");
    }
}

TEST_F(CaptureTest, CapturesSilentlyAndRestoresTheHandler) {
    MemoryStream out;
    int handle = handlerInto(out);
    nqerr_queue_on(handle, 1);
    nqerr_throw(handle, NQERR_WARNING, "before\n");
    {
        CaptureNQErr capture(handle);
        EXPECT_EQ(queued(handle), "");
        nqerr_throw(handle, NQERR_FATAL, "one\n");
        EXPECT_EQ(capture.getMessages(), "FATAL one\n");
        EXPECT_EQ(capture.getMessagesOrDefault("nothing"), "nothing") << "getMessages clears the handler";
        nqerr_throw(handle, NQERR_FATAL, "two\n");
        EXPECT_EQ(capture.addMessagesAsDetails("Failed."), "Failed.\nDetails:\nFATAL two\n");
        EXPECT_EQ(capture.addMessagesAsDetails("Failed."), "Failed.");
        nqerr_throw(handle, NQERR_FATAL, "three\n");
        capture.restore();
        nqerr_throw(handle, NQERR_FATAL, "after restore\n");
        capture.restore();
        EXPECT_EQ(capture.getMessagesOrDefault("nothing"), "FATAL three\n");
    }
    EXPECT_EQ(out.text(), "WARNING before\nFATAL after restore\n");
    EXPECT_EQ(queued(handle), "WARNING before\nFATAL after restore\n");
}

TEST_F(CaptureTest, DestructorRestoresQueueOffAndSuppressedPrinting) {
    int handle = -1, printing = -1;
    nqerr_new(&handle);
    nqerr_suppress_print(handle);
    {
        CaptureNQErr capture(handle);
        nqerr_throw(handle, NQERR_FATAL, "x\n");
    }
    nqerr_print_state(handle, &printing);
    EXPECT_EQ(printing, 0);
    EXPECT_EQ(queued(handle), "<off>");
}

}  // namespace
