// Captures a handler's messages for the duration of a scope instead of printing them.
#ifndef NQERR_CAPTURE_H
#define NQERR_CAPTURE_H

#include <string>

namespace vellum::nqlibs {

class CaptureNQErr {
public:
    // Throws std::out_of_range for a handle that is not valid.
    explicit CaptureNQErr(int handle);
    ~CaptureNQErr();
    CaptureNQErr(const CaptureNQErr&) = delete;
    CaptureNQErr& operator=(const CaptureNQErr&) = delete;

    // The text captured since the last call, clearing the handler; after restore(),
    // the text captured until then.
    std::string getMessages();
    // The captured text, or `text` when nothing was captured.
    std::string getMessagesOrDefault(const std::string& text);
    // `text`, followed by "\nDetails:\n" and the captured text when there is any.
    std::string addMessagesAsDetails(const std::string& text);
    // Puts back the handler's queue and printing as they were; only the first call acts.
    void restore();

private:
    int handle_;
    bool savedQueueOn_ = false;
    std::string savedQueue_;
    bool savedPrintSuppressed_ = false;
    bool restored_ = false;
    std::string capturedAtRestore_;
};

}  // namespace vellum::nqlibs

#endif
