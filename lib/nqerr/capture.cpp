// The scope class that captures a handler's messages.
#include "nqerr_capture.h"

#include "nqerr_internal.h"

#include <stdexcept>
#include <utility>

namespace vellum::nqlibs {

CaptureNQErr::CaptureNQErr(int handle) : handle_(handle) {
    detail::Handler* record = detail::findHandler(handle);
    if (!record) throw std::out_of_range("Invalid nqerr handle: " + std::to_string(handle));
    savedQueueOn_ = record->queueOn;
    savedQueue_ = std::exchange(record->queue, std::string());
    savedPrintSuppressed_ = record->printSuppressed;
    record->queueOn = true;
    record->printSuppressed = true;
}

CaptureNQErr::~CaptureNQErr() { restore(); }

std::string CaptureNQErr::getMessages() {
    if (restored_) return capturedAtRestore_;
    detail::Handler* record = detail::findHandler(handle_);
    if (!record) return {};
    std::string messages = record->queue;
    nqerr_errclear(handle_);
    return messages;
}

std::string CaptureNQErr::getMessagesOrDefault(const std::string& text) {
    std::string messages = getMessages();
    return messages.empty() ? text : messages;
}

std::string CaptureNQErr::addMessagesAsDetails(const std::string& text) {
    std::string messages = getMessages();
    return messages.empty() ? text : text + "\nDetails:\n" + messages;
}

void CaptureNQErr::restore() {
    if (restored_) return;
    restored_ = true;
    detail::Handler* record = detail::findHandler(handle_);
    if (!record) return;
    capturedAtRestore_ = std::exchange(record->queue, std::move(savedQueue_));
    record->queueOn = savedQueueOn_;
    record->printSuppressed = savedPrintSuppressed_;
}

}  // namespace vellum::nqlibs
