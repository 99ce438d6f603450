// Setters and getters of one handler's fields.
#include "nqerr_internal.h"

#include <cstdlib>
#include <cstring>
#include <new>

using namespace vellum::nqlibs::detail;

namespace {
constexpr size_t maxPrefixLength = 511;
}

extern "C" int nqerr_level(int handle, unsigned int level) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    record->level = level;
    return 1;
}

extern "C" int nqerr_get_level(int handle, unsigned int* level) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    *level = record->level;
    return 1;
}

extern "C" int nqerr_file(int handle, FILE* stream) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    record->stream = stream;
    record->outputMode = stream ? StreamOutput : NoOutput;
    return 1;
}

extern "C" void nqerrf_file_(int* handle, int* unit, int* status) {
    Handler* record = findHandler(*handle);
    if (!record) {
        *status = 0;
        return;
    }
    record->unit = *unit;
    record->outputMode = *unit >= 0 ? FortranOutput : NoOutput;
    *status = 1;
}

extern "C" int nqerr_window(int handle, nqerr_callback callback) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    record->callback = callback;
    return 1;
}

extern "C" int nqerr_maxlevel(int handle, unsigned int* level) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    *level = record->maxLevel;
    return 1;
}

extern "C" int nqerr_errclear(int handle) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    record->maxLevel = NQERR_OK;
    std::string().swap(record->queue);
    return 1;
}

extern "C" int nqerr_queue_on(int handle, int on) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    record->queueOn = on != 0;
    if (!record->queueOn) std::string().swap(record->queue);
    return 1;
}

extern "C" int nqerr_get_queue_on(int handle, int* on) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    *on = record->queueOn ? 1 : 0;
    return 1;
}

extern "C" int nqerr_queue_get(int handle, char** text) {
    Handler* record = findHandler(handle);
    if (!record || !record->queueOn) return 0;
    char* copy = static_cast<char*>(std::malloc(record->queue.size() + 1));
    if (!copy) return 0;
    std::memcpy(copy, record->queue.c_str(), record->queue.size() + 1);
    *text = copy;
    return 1;
}

extern "C" int nqerr_prefix(int handle, const char* text) {
    Handler* record = findHandler(handle);
    if (!record || !text) return 0;
    // The old prefix goes first, so a refused text leaves the handler without one.
    std::string().swap(record->prefix);
    size_t length = std::strlen(text);
    if (length > maxPrefixLength) return 0;
    try {
        record->prefix.assign(text, length);
    } catch (const std::bad_alloc&) {
        return 0;
    }
    return 1;
}

extern "C" int nqerr_suppress_print(int handle) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    record->printSuppressed = true;
    return 1;
}

extern "C" int nqerr_restore_print(int handle) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    record->printSuppressed = false;
    return 1;
}

extern "C" int nqerr_print_state(int handle, int* state) {
    Handler* record = findHandler(handle);
    if (!record) return 0;
    *state = record->printSuppressed ? 0 : 1;
    return 1;
}
