// Shared by the nqerr tests: an in-memory output stream and a fixture that
// leaves the process-wide library as it found it.
#ifndef NQERR_FIXTURE_H
#define NQERR_FIXTURE_H

#include "nqerr.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

struct MemoryStream {
    char* data = nullptr;
    size_t size = 0;
    FILE* stream = open_memstream(&data, &size);

    ~MemoryStream() {
        std::fclose(stream);
        std::free(data);
    }
    std::string text() {
        std::fflush(stream);
        return std::string(data, size);
    }
};

// The handler's queue, or "<off>" when its queue is off.
inline std::string queued(int handle) {
    char* text = nullptr;
    if (!nqerr_queue_get(handle, &text)) return "<off>";
    std::string copy = text;
    std::free(text);
    return copy;
}

class NqerrTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(nqerr_initialize(), 1); }
    void TearDown() override {
        while (nqerr_refcount() > 0) nqerr_terminate();
        // The default handler outlives termination; put back the stream the tests change.
        nqerr_file(NQERR_DEFAULT_HANDLER, stderr);
    }
    // A new handler writing to `out` from `level` up.
    static int handlerInto(MemoryStream& out, unsigned int level = NQERR_WARNING) {
        int handle = -1;
        EXPECT_EQ(nqerr_new(&handle), 1);
        nqerr_file(handle, out.stream);
        nqerr_level(handle, level);
        return handle;
    }
};

#endif
