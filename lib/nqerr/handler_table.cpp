// The handler table: lookup, creation and deletion of handlers.
#include "nqerr_internal.h"

#include <new>

namespace vellum::nqlibs::detail {

Library& library() {
    static Library state;
    return state;
}

Handler* findHandler(int handle) {
    Library& lib = library();
    if (handle == NQERR_DEFAULT_HANDLER) {
        // Standard error is not a constant, so the default output is set on first use.
        if (!lib.defaultHandlerSeen) {
            lib.defaultHandlerSeen = true;
            lib.defaultHandler.stream = stderr;
            lib.defaultHandler.outputMode = StreamOutput;
        }
        return &lib.defaultHandler;
    }
    if (handle < 0 || static_cast<size_t>(handle) >= lib.handlers.size()) return nullptr;
    Handler& record = lib.handlers[static_cast<size_t>(handle)];
    return record.inUse ? &record : nullptr;
}

}  // namespace vellum::nqlibs::detail

using namespace vellum::nqlibs::detail;

extern "C" int nqerr_new(int* handle) {
    Library& lib = library();
    *handle = NQERR_DEFAULT_HANDLER;
    if (lib.refCount < 1) return 0;
    for (size_t i = 0; i < lib.handlers.size(); ++i) {
        if (!lib.handlers[i].inUse) {
            lib.handlers[i] = Handler{};
            *handle = static_cast<int>(i);
            return 1;
        }
    }
    try {
        lib.handlers.emplace_back();
    } catch (const std::bad_alloc&) {
        return 0;
    }
    *handle = static_cast<int>(lib.handlers.size() - 1);
    return 1;
}

extern "C" int nqerr_delete(int handle) {
    if (handle == NQERR_DEFAULT_HANDLER) {
        nqerr_throw(NQERR_DEFAULT_HANDLER, NQERR_WARNING, "Default handler can not be deleted.\n");
        return 0;
    }
    Handler* record = findHandler(handle);
    if (!record) return 0;
    // The slot stays in use: callers may still hold the handle and use its level and output.
    std::string().swap(record->queue);
    std::string().swap(record->prefix);
    return 1;
}
