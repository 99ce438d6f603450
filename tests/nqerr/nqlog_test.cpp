#include "nqlog_testing.h"

#include "nqerr_fixture.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

class TimingLogTest : public NqerrTest {
protected:
    void SetUp() override {
        NqerrTest::SetUp();
        setenv("TZ", "UTC", 1);
        tzset();
        previousDir = std::filesystem::current_path();
        scratch = std::filesystem::temp_directory_path() / ("nqlog_test." + std::to_string(getpid()));
        std::filesystem::create_directories(scratch);
        std::filesystem::current_path(scratch);
        nqlog_set_pid(4242);
    }
    void TearDown() override {
        nqlog_set_timing_output(0);
        nqlog_set_clock(nullptr);
        nqlog_set_pid(0);
        std::filesystem::current_path(previousDir);
        std::filesystem::remove_all(scratch);
        NqerrTest::TearDown();
    }
    static std::string logText() {
        std::ifstream in("nqlog_timing.4242.log");
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    std::filesystem::path previousDir, scratch;
};

long clockMicroseconds = 0;

void fixedClock(time_t* seconds, long* microseconds) {
    *seconds = 1772442303;  // 2026-03-02 09:05:03 UTC
    *microseconds = clockMicroseconds;
}

TEST_F(TimingLogTest, WritesStampedLinesOnlyWhileEnabled) {
    nqlog_set_clock(fixedClock);
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
    EXPECT_EQ(logText(), "TIMING INFO [2026-03-02 09:05:03.7] a:11 message \n"
                         "TIMING INFO [2026-03-02 09:05:03.50] dir/b.cpp:1 two words \n");
}

class DeprecationTest : public NqerrTest {
protected:
    void SetUp() override {}  // each case starts the library after setting the environment
    // Starts a library lifetime with the variable set or not, its warnings going to `out`.
    static void start(bool variableSet, MemoryStream& out) {
        if (variableSet)
            setenv("VELLUM_DEPRECATION_WARNING", "", 1);
        else
            unsetenv("VELLUM_DEPRECATION_WARNING");
        ASSERT_EQ(nqerr_initialize(), 1);
        int handle = -1;
        nqerr_get_named_handler("DEPRECATION", &handle);
        if (variableSet) nqerr_file(handle, out.stream);
        unsetenv("VELLUM_DEPRECATION_WARNING");
    }
    static void warn(const char* file, int line) {
        nqlog_deprecation_warning(file, line, "nqfile_old", "%s function is deprecated for %s\n", "nqfile_old",
                                  "nqfile_new");
    }
};

TEST_F(DeprecationTest, OncePerCallSiteWhenTheVariableWasSetAtStart) {
    static const char file[] = "lib/path.cpp";
    static const char sameText[] = "lib/path.cpp";
    // Warned sites last for the process; fresh line numbers keep repeated runs independent.
    static int site = 0;
    site += 2;
    MemoryStream out;
    start(false, out);
    setenv("VELLUM_DEPRECATION_WARNING", "1", 1);
    warn(file, site);
    nqerr_terminate();
    unsetenv("VELLUM_DEPRECATION_WARNING");

    start(true, out);
    warn(file, site);
    warn(file, site);
    warn(sameText, site);
    warn(file, site + 1);
    const std::string head = "WARNING DEPRECATION for nqfile_old (lib/path.cpp:";
    const std::string tail = "): nqfile_old function is deprecated for nqfile_new\n";
    const std::string first = head + std::to_string(site) + tail;
    EXPECT_EQ(out.text(), first + first + head + std::to_string(site + 1) + tail);
}

}  // namespace
