// Initialisation and termination, nested by a reference count.
#include "nqerr_internal.h"

using namespace vellum::nqlibs::detail;

extern "C" int nqerr_initialize(void) {
    Library& lib = library();
    ++lib.refCount;
    if (lib.refCount == 1) return setUpDeprecation();
    return 1;
}

extern "C" int nqerr_terminate(void) {
    Library& lib = library();
    if (lib.refCount < 1) {
        nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_WARNING,
                    "nqerr_terminate: The nqerr library has not been initialized.\n");
        lib.refCount = 0;
        return 0;
    }
    if (lib.refCount > 1) {
        --lib.refCount;
        return 1;
    }
    for (size_t i = lib.handlers.size(); i-- > 0;) nqerr_delete(static_cast<int>(i));
    std::string().swap(lib.defaultHandler.queue);
    std::vector<Handler>().swap(lib.handlers);
    lib.namedHandlers.clear();
    lib.refCount = 0;
    return 1;
}

extern "C" int nqerr_refcount(void) { return library().refCount; }
