// Time-stamped timing lines in a per-process log file.
#include "nqerr_internal.h"
#include "nqlog_testing.h"

#include <sys/time.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>

using namespace vellum::nqlibs::detail;

namespace {

bool timingEnabled = false;

void systemClock(time_t* seconds, long* microseconds) {
    timeval now{};
    gettimeofday(&now, nullptr);
    *seconds = now.tv_sec;
    *microseconds = static_cast<long>(now.tv_usec);
}

nqlog_clock currentClock = systemClock;
long pidOverride = 0;

}  // namespace

extern "C" void nqlog_set_clock(nqlog_clock clock) { currentClock = clock ? clock : systemClock; }

extern "C" void nqlog_set_pid(long pid) { pidOverride = pid; }

extern "C" int nqerr_get_timing_handler(int* handle) { return nqerr_get_named_handler("TIMING", handle); }

extern "C" int nqlog_set_timing_output(int enable) {
    timingEnabled = enable != 0;
    int handle = NQERR_DEFAULT_HANDLER;
    int status = nqerr_get_timing_handler(&handle);
    if (!status) {
        nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_FATAL, "Could not get timing error handler");
        return status;
    }
    if (enable) {
        char fileName[64];
        std::snprintf(fileName, sizeof fileName, "nqlog_timing.%ld.log",
                      pidOverride ? pidOverride : static_cast<long>(getpid()));
        // A failed open hands over a null stream, which switches the file output off.
        nqerr_file(handle, std::fopen(fileName, "w"));
        nqerr_prefix(handle, "TIMING ");
    } else {
        Handler* record = findHandler(handle);
        if (record && record->stream) {
            std::fclose(record->stream);
            nqerr_file(handle, nullptr);
        }
    }
    timingEnabled = enable != 0;
    return status;
}

extern "C" int nqlog_timing_info(const char* file, int line, const char* message) {
    if (!timingEnabled) return 1;
    int handle = NQERR_DEFAULT_HANDLER;
    int status = nqerr_get_timing_handler(&handle);
    if (!status) {
        nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_FATAL, "Could not get timing error handler");
        return status;
    }
    time_t seconds = 0;
    long microseconds = 0;
    currentClock(&seconds, &microseconds);
    tm local{};
    localtime_r(&seconds, &local);
    char stamp[32];
    size_t used = std::strftime(stamp, sizeof stamp, "[%Y-%m-%d %H:%M:%S", &local);
    // Milliseconds unpadded: 5 ms reads .5], 50 ms reads .50].
    std::snprintf(stamp + used, sizeof stamp - used, ".%lu]", static_cast<unsigned long>(microseconds / 1000));

    // The printed line is one past the caller's; readers of these logs expect that.
    int printedLine = static_cast<int>(static_cast<unsigned int>(line) + 1u);
    int result = nqerr_throw(handle, NQERR_INFO, "%s %s:%d %s \n", stamp, file, printedLine, message);
    if (result <= 0) nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_FATAL, "Error in nqerr_vthrow in nqlog_timing_info");
    return result;
}
