// Handlers shared between callers by name.
#include "nqerr_internal.h"

#include <cstring>
#include <new>

using namespace vellum::nqlibs::detail;

extern "C" int nqerr_get_named_handler(const char* name, int* handle) {
    Library& lib = library();
    auto found = lib.namedHandlers.find(name);
    if (found != lib.namedHandlers.end()) {
        *handle = found->second;
        return 1;
    }
    // A failed creation registers nothing, so the name never stands for the default handler.
    if (!nqerr_new(handle)) return 0;
    // The timing log writes at level 3, below the default threshold.
    if (std::strcmp(name, "TIMING") == 0) nqerr_level(*handle, NQERR_INFO);
    try {
        lib.namedHandlers.emplace(name, *handle);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return 1;
}
