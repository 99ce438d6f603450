#include "error_capture.h"

#include <stdexcept>

#include "nqerr.h"

namespace quillet::testing {

ErrorCapture::ErrorCapture() {
    file_ = std::tmpfile();
    if (file_ == nullptr || nqerr_initialize() != 1 || nqerr_new(&context_.report.debugHandler) != 1 ||
        nqerr_new(&context_.report.errorHandler) != 1 || nqerr_level(context_.report.errorHandler, NQERR_DEBUG) != 1 ||
        nqerr_file(context_.report.errorHandler, file_) != 1 || nqerr_level(context_.report.debugHandler, NQERR_OFF) != 1)
        throw std::runtime_error("cannot set up the error library");
    context_.report.err = file_;
    context_.report.out = file_;
}

ErrorCapture::~ErrorCapture() {
    nqerr_terminate();
    std::fclose(file_);
}

std::string ErrorCapture::messages() {
    std::fflush(file_);
    std::rewind(file_);
    std::string text;
    for (int c; (c = std::fgetc(file_)) != EOF;) text.push_back(static_cast<char>(c));
    return text;
}

}  // namespace quillet::testing
