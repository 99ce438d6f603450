#include "model/reporter.h"

#include <string>

#include "nqerr.h"

namespace quillet {

void Reporter::emit(Channel channel, int identity, const char* format, std::va_list args) const {
    if (listener_) {
        if (channel == Channel::Progress) return;
        std::va_list copy;
        va_copy(copy, args);
        const int length = std::vsnprintf(nullptr, 0, format, copy);
        va_end(copy);
        std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
        std::vsnprintf(text.data(), text.size() + 1, format, args);
        listener_(Message{channel, position_, text, identity});
        return;
    }
    switch (channel) {
    case Channel::Error: nqerr_vthrow(errorHandler, NQERR_FATAL, format, args); break;
    case Channel::ErrorDebug: nqerr_vthrow(errorHandler, NQERR_DEBUG, format, args); break;
    case Channel::Progress: nqerr_vthrow(debugHandler, NQERR_DEBUG, format, args); break;
    case Channel::StandardError: std::vfprintf(err, format, args); break;
    case Channel::StandardOutput: break;
    }
}

#define QUILLET_FORWARD(method, channel)          \
    void Reporter::method(const char* format, ...) const { \
        std::va_list args;                        \
        va_start(args, format);                   \
        emit(channel, -1, format, args);          \
        va_end(args);                             \
    }

QUILLET_FORWARD(error, Channel::Error)
QUILLET_FORWARD(standardError, Channel::StandardError)

#undef QUILLET_FORWARD

void Reporter::raise(Channel channel, int identity, const char* format, ...) const {
    std::va_list args;
    va_start(args, format);
    emit(channel, identity, format, args);
    va_end(args);
}

void Reporter::standardOutput(std::string_view text) const {
    if (listener_) {
        listener_(Message{Channel::StandardOutput, position_, text});
        return;
    }
    std::fwrite(text.data(), 1, text.size(), out);
    std::fflush(out);
}

}  // namespace quillet
