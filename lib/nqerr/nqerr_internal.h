// State shared by the nqerr translation units; not part of the public API.
#ifndef NQERR_INTERNAL_H
#define NQERR_INTERNAL_H

#include "nqerr.h"

#include <map>
#include <string>
#include <vector>

namespace vellum::nqlibs::detail {

enum OutputMode { NoOutput = 0, StreamOutput = 1, FortranOutput = 2 };

struct Handler {
    bool inUse = true;
    unsigned int level = NQERR_WARNING;
    FILE* stream = nullptr;
    int unit = -1;
    nqerr_callback callback = nullptr;
    unsigned int maxLevel = NQERR_OK;
    bool queueOn = false;
    std::string queue;
    std::string prefix;
    int outputMode = NoOutput;
    bool printSuppressed = false;
};

struct Library {
    int refCount = 0;
    std::vector<Handler> handlers;
    std::map<std::string, int> namedHandlers;
    Handler defaultHandler;
    bool defaultHandlerSeen = false;
};

Library& library();

// The record of a valid handle, or null; -1 is always valid.
Handler* findHandler(int handle);

const char* levelName(unsigned int level);

// Run by the first initialisation of a library lifetime.
int setUpDeprecation();

}  // namespace vellum::nqlibs::detail

#endif
