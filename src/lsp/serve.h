#pragma once

namespace quillet::lsp {

// Exit statuses of quillet-lsp.
constexpr int kExitAfterShutdown = 0;
constexpr int kExitWithoutShutdown = 1;  // exit before shutdown, or the client's input lost
constexpr int kUsageError = 2;

// Serves one client: reads framed messages from `in` and writes to `out`
// until `exit` or the end of either stream. Returns the exit status.
int serve(int in, int out);

}  // namespace quillet::lsp
