// Once-per-call-site deprecation warnings, switched on from the environment.
#include "nqerr_internal.h"

#include <cstdlib>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace {

// Off until the library first starts, which reads the environment; later lifetimes keep the answer.
std::optional<bool> deprecationEnabled;

// Keyed by the file-name pointer, not its text: each compiled call site passes its own literal.
std::set<std::pair<const char*, int>>& warnedSites() {
    static std::set<std::pair<const char*, int>> sites;
    return sites;
}

}  // namespace

namespace vellum::nqlibs::detail {

int setUpDeprecation() {
    int handle = NQERR_DEFAULT_HANDLER;
    int status = nqerr_get_named_handler("DEPRECATION", &handle);
    if (!status) {
        nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_FATAL, "Could not get deprecation error handler");
        return status;
    }
    if (!deprecationEnabled) deprecationEnabled = std::getenv("VELLUM_DEPRECATION_WARNING") != nullptr;
    if (*deprecationEnabled) nqerr_file(handle, stderr);
    return status;
}

}  // namespace vellum::nqlibs::detail

extern "C" int nqlog_deprecation_warning(const char* file, int line, const char* function, const char* format, ...) {
    if (!deprecationEnabled.value_or(false)) return 1;
    if (!warnedSites().emplace(file, line).second) return 1;

    std::string composed = std::string("DEPRECATION for ") + function + " (" + file + ":" + std::to_string(line) +
                           "): " + format;
    int handle = NQERR_DEFAULT_HANDLER;
    if (!nqerr_get_named_handler("DEPRECATION", &handle)) {
        nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_FATAL, "Could not get deprecation error handler\n");
        return 1;
    }
    va_list args;
    va_start(args, format);
    int status = nqerr_vthrow(handle, NQERR_WARNING, composed.c_str(), args);
    va_end(args);
    if (!status)
        nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_FATAL, "Error in nqerr_vthrow in nqerr_deprecation_warning\n");
    return 1;
}
