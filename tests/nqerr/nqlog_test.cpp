// Each case runs in a fresh child process, whose standard error is
// compared: the deprecation variable is read at the library's first start
// only, and the timing log changes directory and clock as it likes.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iostream>

#include "nqerr.h"
#include "nqlog_testing.h"

namespace {

long clockMicroseconds = 0;

void fixedClock(time_t* seconds, long* microseconds) {
    *seconds = 1772442303;  // 2026-03-02 09:05:03 UTC
    *microseconds = clockMicroseconds;
}

void logTimingWhileEnabled() {
    setenv("TZ", "UTC", 1);
    tzset();
    char dir[] = "/tmp/nqlog_test.XXXXXX";
    if (mkdtemp(dir) == nullptr || chdir(dir) != 0) std::exit(1);
    nqlog_set_clock(fixedClock);
    nqlog_set_pid(4242);
    nqerr_initialize();
    nqlog_timing_info("a", 1, "before");
    nqlog_set_timing_output(1);
    clockMicroseconds = 7999;
    nqlog_timing_info("a", 10, "message");
    clockMicroseconds = 50000;
    nqlog_timing_info("dir/b.cpp", 0, "two words");
    nqlog_set_timing_output(0);
    nqlog_set_timing_output(0);  // finds no stream to close
    nqlog_timing_info("a", 2, "after");
    std::cerr << std::ifstream("nqlog_timing.4242.log").rdbuf();
    std::remove("nqlog_timing.4242.log");
    rmdir(dir);
    std::exit(0);
}

// Milliseconds unpadded, the line number one up, a blank before the line end.
TEST(NqlogTest, TimingWritesStampedLinesOnlyWhileEnabled) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(logTimingWhileEnabled(), ::testing::ExitedWithCode(0),
                ::testing::Eq("TIMING INFO [2026-03-02 09:05:03.7] a:11 message \n"
                              "TIMING INFO [2026-03-02 09:05:03.50] dir/b.cpp:1 two words \n"));
}

const char sitePath[] = "lib/path.cpp";
const char sitePathCopy[] = "lib/path.cpp";

void warn(const char* file, int line) {
    nqlog_deprecation_warning(file, line, "nqfile_old", "%s function is deprecated for %s\n", "nqfile_old",
                              "nqfile_new");
}

void warnFromSitesAcrossTwoLifetimes() {
    setenv("VELLUM_DEPRECATION_WARNING", "", 1);
    warn(sitePath, 12);  // before the start: neither printed nor recorded
    nqerr_initialize();
    warn(sitePath, 12);
    warn(sitePath, 12);
    warn(sitePathCopy, 12);  // a site is its file text's address
    nqerr_terminate();
    unsetenv("VELLUM_DEPRECATION_WARNING");
    nqerr_initialize();
    warn(sitePath, 12);
    warn(sitePath, 13);
    std::exit(0);
}

TEST(NqlogTest, DeprecationWarnsOncePerCallSiteOnStandardError) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string head = "WARNING DEPRECATION for nqfile_old (lib/path.cpp:";
    const std::string tail = "): nqfile_old function is deprecated for nqfile_new\n";
    EXPECT_EXIT(warnFromSitesAcrossTwoLifetimes(), ::testing::ExitedWithCode(0),
                ::testing::Eq(head + "12" + tail + head + "12" + tail + head + "13" + tail));
}

}  // namespace
