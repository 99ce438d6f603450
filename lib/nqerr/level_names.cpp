// Level names and the return-code texts built from them.
#include "nqerr_internal.h"

#include <cstdio>

namespace vellum::nqlibs::detail {

const char* levelName(unsigned int level) {
    static const char* const names[] = {"BUMMER", "OK", "DEBUG", "INFO", "WARNING", "FATAL", "OFF"};
    return level <= NQERR_OFF ? names[level] : "LEVEL UNDEFINED";
}

}  // namespace vellum::nqlibs::detail

extern "C" const char* nqerr_return_code(unsigned int level) {
    // Rotating buffers keep each result intact for the next nine calls.
    static char buffers[10][512];
    static unsigned int next = 0;
    next = (next + 1) % 10;
    char* buffer = buffers[next];
    if (level <= 7)
        std::snprintf(buffer, sizeof buffers[0], "NQERR_%s", vellum::nqlibs::detail::levelName(level));
    else
        std::snprintf(buffer, sizeof buffers[0], "(bogus NQERR level)");
    return buffer;
}
