#include "nqlog_testing.h"

#include "nqerr_fixture.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

long clockMicroseconds = 0;

void fixedClock(time_t* seconds, long* microseconds) {
    *seconds = 1772442303;  // 2026-03-02 09:05:03 UTC
    *microseconds = clockMicroseconds;
}

std::string readAll(const std::filesystem::path& path) {
    std::ifstream in(path);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

using TimingLogTest = NqerrTest;

TEST_F(TimingLogTest, WritesStampedLinesOnlyWhileEnabled) {
    setenv("TZ", "UTC", 1);
    tzset();
    const auto previousDir = std::filesystem::current_path();
    const auto scratch = std::filesystem::temp_directory_path() / ("nqlog_test." + std::to_string(getpid()));
    std::filesystem::create_directories(scratch);
    std::filesystem::current_path(scratch);
    nqlog_set_clock(fixedClock);
    nqlog_set_pid(4242);

    EXPECT_EQ(nqlog_timing_info("a", 1, "before"), 1);
    EXPECT_FALSE(std::filesystem::exists("nqlog_timing.4242.log"));
    ASSERT_EQ(nqlog_set_timing_output(1), 1);
    clockMicroseconds = 7999;
    EXPECT_EQ(nqlog_timing_info("a", 10, "message"), 1);
    clockMicroseconds = 50000;
    EXPECT_EQ(nqlog_timing_info("dir/b.cpp", 0, "two words"), 1);
    EXPECT_EQ(nqlog_set_timing_output(0), 1);
    EXPECT_EQ(nqlog_set_timing_output(0), 1) << "a second switch-off finds no stream";
    EXPECT_EQ(nqlog_timing_info("a", 2, "after"), 1);
    EXPECT_EQ(readAll("nqlog_timing.4242.log"), "TIMING INFO [2026-03-02 09:05:03.7] a:11 message \n"
                                                "TIMING INFO [2026-03-02 09:05:03.50] dir/b.cpp:1 two words \n");

    nqlog_set_clock(nullptr);
    nqlog_set_pid(0);
    std::filesystem::current_path(previousDir);
    std::filesystem::remove_all(scratch);
}

// The variable is read once per process, so each case runs in a fresh child process.
class DeprecationTest : public ::testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

void warn(const char* file, int line) {
    nqlog_deprecation_warning(file, line, "nqfile_old", "%s function is deprecated for %s\n", "nqfile_old",
                              "nqfile_new");
}

const char sitePath[] = "lib/path.cpp";
const char sitePathCopy[] = "lib/path.cpp";

void warnFromSitesAcrossTwoLifetimes() {
    warn(sitePath, 12);  // silent and not recorded: the library has not started
    nqerr_initialize();
    warn(sitePath, 12);
    warn(sitePath, 12);
    warn(sitePathCopy, 12);
    nqerr_terminate();
    nqerr_initialize();
    warn(sitePath, 12);
    warn(sitePath, 13);
    nqerr_terminate();
    std::exit(0);
}

TEST_F(DeprecationTest, OncePerCallSiteOnStandardError) {
    setenv("VELLUM_DEPRECATION_WARNING", "", 1);
    const std::string head = "WARNING DEPRECATION for nqfile_old (lib/path.cpp:";
    const std::string tail = "): nqfile_old function is deprecated for nqfile_new\n";
    EXPECT_EXIT(warnFromSitesAcrossTwoLifetimes(), ::testing::ExitedWithCode(0),
                ::testing::Eq(head + "12" + tail + head + "12" + tail + head + "13" + tail));
    unsetenv("VELLUM_DEPRECATION_WARNING");
}

void setVariableAfterStart() {
    nqerr_initialize();
    setenv("VELLUM_DEPRECATION_WARNING", "1", 1);
    warn(sitePath, 20);
    nqerr_terminate();
    nqerr_initialize();
    warn(sitePath, 21);
    std::exit(0);
}

TEST_F(DeprecationTest, VariableSetAfterTheFirstStartIsIgnored) {
    unsetenv("VELLUM_DEPRECATION_WARNING");
    EXPECT_EXIT(setVariableAfterStart(), ::testing::ExitedWithCode(0), ::testing::Eq(std::string()));
}

}  // namespace
