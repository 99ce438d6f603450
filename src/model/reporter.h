#pragma once

#include <cstdarg>
#include <cstdio>
#include <functional>
#include <string_view>

namespace quillet {

// Where a message goes. Each channel has one fixed destination and level, so
// a caller names what the message is, never a handler or a number.
enum class Channel {
    Error,           // the error handler at FATAL: every refusal and failure
    ErrorDebug,      // the error handler at DEBUG: a limit found by lookup entry ID
    Progress,        // the debug handler at DEBUG: silent with the driver's settings
    StandardError,   // written directly: the range messages of the limit checks
    StandardOutput,  // written directly: the unknown alias keyword
};

// The line and the 1-based byte column of the word being handled; 0 where
// the message belongs to no word (a writer, the end of input).
struct Position {
    int line = 0;
    int column = 0;
};

#if defined(__GNUC__)
#define QUILLET_PRINTF(f, a) __attribute__((format(printf, f, a)))
#else
#define QUILLET_PRINTF(f, a)
#endif

// Every message of the tool goes through one reporter. By default it prints
// exactly as the tool always has; a listener (the linter) receives each
// message with the position instead.
class Reporter {
public:
    struct Message {
        Channel channel;
        Position position;
        std::string_view text;
        // Which row of the language's table of diagnostics raised it, by
        // number; -1 for a writer's message, which has none.
        int identity = -1;
    };
    using Listener = std::function<void(const Message&)>;

    int errorHandler = -1;
    int debugHandler = -1;
    std::FILE* out = stdout;
    std::FILE* err = stderr;

    void setPosition(Position position) { position_ = position; }
    Position position() const { return position_; }
    // Sends every later message to `listener` instead of its channel.
    void listen(Listener listener) { listener_ = std::move(listener); }

    void error(const char* format, ...) const QUILLET_PRINTF(2, 3);
    void standardError(const char* format, ...) const QUILLET_PRINTF(2, 3);
    // A message of the language's table of diagnostics, on its channel.
    void raise(Channel channel, int identity, const char* format, ...) const;
    // Written as it stands: an alias file's words may hold NUL bytes.
    void standardOutput(std::string_view text) const;

private:
    void emit(Channel channel, int identity, const char* format, std::va_list args) const;

    Position position_;
    Listener listener_;
};

}  // namespace quillet
