#include "nqerr_fixture.h"

namespace {

using LifecycleTest = NqerrTest;

TEST_F(LifecycleTest, ReferenceCountNestsAndUnbalancedTerminateIsReported) {
    MemoryStream out;
    nqerr_file(NQERR_DEFAULT_HANDLER, out.stream);
    int handle = -1;
    unsigned int level = 0;
    ASSERT_EQ(nqerr_new(&handle), 1);
    ASSERT_EQ(nqerr_initialize(), 1);
    EXPECT_EQ(nqerr_refcount(), 2);
    EXPECT_EQ(nqerr_terminate(), 1);
    EXPECT_EQ(nqerr_get_level(handle, &level), 1) << "an inner terminate frees nothing";
    EXPECT_EQ(nqerr_terminate(), 1);
    EXPECT_EQ(nqerr_get_level(handle, &level), 0);
    EXPECT_EQ(nqerr_throw(handle, NQERR_FATAL, "lost\n"), 0);
    EXPECT_EQ(nqerr_new(&handle), 0);
    EXPECT_EQ(handle, -1);
    EXPECT_EQ(nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_WARNING, "default works\n"), 1);
    EXPECT_EQ(nqerr_terminate(), 0);
    EXPECT_EQ(nqerr_refcount(), 0);
    EXPECT_EQ(out.text(), "WARNING default works\n"
                          "WARNING nqerr_terminate: The nqerr library has not been initialized.\n");
}

TEST_F(LifecycleTest, HandlesFollowTheDeprecationHandlerInEveryLifetime) {
    for (int lifetime = 0; lifetime < 2; ++lifetime) {
        int deprecation = -1, first = -1, second = -1;
        EXPECT_EQ(nqerr_get_named_handler("DEPRECATION", &deprecation), 1);
        nqerr_new(&first);
        nqerr_new(&second);
        EXPECT_EQ(deprecation, 0);
        EXPECT_EQ(first, 1);
        EXPECT_EQ(second, 2);
        nqerr_terminate();
        ASSERT_EQ(nqerr_initialize(), 1);
    }
}

TEST_F(LifecycleTest, DeleteKeepsTheSlotButDropsQueueAndPrefix) {
    MemoryStream out;
    nqerr_file(NQERR_DEFAULT_HANDLER, out.stream);
    int handle = handlerInto(out, NQERR_DEBUG), next = -1;
    nqerr_prefix(handle, "pre ");
    nqerr_queue_on(handle, 1);
    nqerr_throw(handle, NQERR_DEBUG, "queued\n");
    EXPECT_EQ(nqerr_delete(handle), 1);
    EXPECT_EQ(nqerr_delete(NQERR_DEFAULT_HANDLER), 0);
    nqerr_throw(handle, NQERR_DEBUG, "after\n");
    EXPECT_EQ(queued(handle), "DEBUG after\n");
    EXPECT_EQ(out.text(), "pre DEBUG queued\nWARNING Default handler can not be deleted.\nDEBUG after\n");
    nqerr_new(&next);
    EXPECT_EQ(next, handle + 1);
}

TEST_F(LifecycleTest, NamedHandlersAreSharedAndTimingListensFromInfo) {
    int timing = -1, again = -1, other = -1;
    unsigned int timingLevel = 0, otherLevel = 0;
    ASSERT_EQ(nqerr_get_named_handler("TIMING", &timing), 1);
    ASSERT_EQ(nqerr_get_timing_handler(&again), 1);
    ASSERT_EQ(nqerr_get_named_handler("OTHER", &other), 1);
    EXPECT_EQ(timing, again);
    EXPECT_NE(timing, other);
    nqerr_get_level(timing, &timingLevel);
    nqerr_get_level(other, &otherLevel);
    EXPECT_EQ(timingLevel, 3u);
    EXPECT_EQ(otherLevel, 4u);
}

}  // namespace
