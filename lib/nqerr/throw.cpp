// Reporting one message through a handler.
#include "nqerr_internal.h"

#include <cstdio>
#include <cstring>
#include <new>

using namespace vellum::nqlibs::detail;

namespace {
constexpr size_t messageBufferSize = 10240;
}

extern "C" int nqerr_vthrow(int handle, unsigned int level, const char* format, va_list args) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    // Counted before the threshold test, so filtered messages still raise it.
    if (level <= NQERR_OFF && level > record->maxLevel) record->maxLevel = level;
    if (level < record->level) return 1;

    char message[messageBufferSize];
    // The prefix is at most 511 characters, so the head always fits.
    int head = std::snprintf(message, sizeof message, "%s%s ", record->prefix.c_str(), levelName(level));
    std::vsnprintf(message + head, sizeof message - static_cast<size_t>(head), format, args);
    // Messages are C strings throughout: a NUL produced by the format ends the text.
    size_t length = std::strlen(message);

    if (!record->printSuppressed) {
        // Output mode 2 writes to a Fortran unit; this build has no Fortran runtime.
        if (record->outputMode == StreamOutput && std::fwrite(message, 1, length, record->stream) != length)
            return 0;
        if (record->callback && record->callback(message) == -1) return 0;
    }
    if (record->queueOn) {
        try {
            record->queue.append(message, length);
        } catch (const std::bad_alloc&) {
            return 0;
        }
    }
    return 1;
}

extern "C" int nqerr_throw(int handle, unsigned int level, const char* format, ...) {
    va_list args;
    va_start(args, format);
    int result = nqerr_vthrow(handle, level, format, args);
    va_end(args);
    return result;
}
