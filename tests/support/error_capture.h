#pragma once

#include <cstdio>
#include <string>

#include "model/run_context.h"

namespace quillet::testing {

// An initialised error library whose error handler is set up as the driver
// sets it up, but prints into a temporary file; the context's direct error
// stream is the same file, so messages() gives everything in order.
class ErrorCapture {
public:
    ErrorCapture();
    ~ErrorCapture();
    ErrorCapture(const ErrorCapture&) = delete;
    ErrorCapture& operator=(const ErrorCapture&) = delete;

    RunContext& context() { return context_; }
    std::string messages();

private:
    std::FILE* file_ = nullptr;
    RunContext context_;
};

}  // namespace quillet::testing
