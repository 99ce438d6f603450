// The language server in-process on random message sequences. The input is
// split at 0xFF bytes into steps; each step's first byte picks a message and
// the rest gives its document text, its position or its raw body. A step
// starting with 'F' is fed through the framing reader instead. Beyond the
// sanitizers it checks that the server answers every request it is sent.
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "fuzz_support.h"
#include "lsp/framing.h"
#include "lsp/server.h"

using namespace quillet;
using lsp::json;

namespace {

constexpr std::string_view kUri = "file:///fuzz.def";

const char* const kRequests[] = {
    "textDocument/hover",          "textDocument/definition", "textDocument/references",
    "textDocument/documentSymbol", "textDocument/completion", "textDocument/codeAction",
    "textDocument/semanticTokens/full", "textDocument/formatting",
};

json position(std::string_view bytes) {
    const int line = bytes.size() > 0 ? static_cast<unsigned char>(bytes[0]) % 16 : 0;
    const int character = bytes.size() > 1 ? static_cast<unsigned char>(bytes[1]) % 64 : 0;
    return {{"line", line}, {"character", character}};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = fuzz::bytesOf(data, size);
    int requests = 0;
    int answers = 0;
    lsp::Server server([&](std::string_view body) {
        answers += json::parse(body).contains("id");
        return true;
    });
    const char* encodings[] = {"utf-8", "utf-16", "utf-32"};
    server.handle(json{{"jsonrpc", "2.0"}, {"id", ++requests}, {"method", "initialize"},
                       {"params", {{"capabilities", {{"general", {{"positionEncodings", {encodings[size % 3]}}}}}}}}}
                      .dump());
    int version = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t end = bytes.find('\xFF', at);
        if (end == std::string::npos) end = bytes.size();
        const std::string_view step(bytes.data() + at, end - at);
        at = end + 1;
        if (step.empty()) continue;
        const std::string_view rest = step.substr(1);
        // Texts reach the server as JSON strings: the client has decoded them.
        const std::string text = lsp::toValidUtf8(rest);
        json message = {{"jsonrpc", "2.0"}};
        switch (static_cast<unsigned char>(step[0]) % 12) {
        case 0:
            message["method"] = "textDocument/didOpen";
            message["params"] = {{"textDocument", {{"uri", kUri}, {"languageId", "quillet"}, {"version", ++version},
                                                   {"text", text}}}};
            break;
        case 1: {
            const json from = position(rest);
            const json to = position(rest.substr(std::min<std::size_t>(rest.size(), 2)));
            message["method"] = "textDocument/didChange";
            message["params"] = {{"textDocument", {{"uri", kUri}, {"version", ++version}}},
                                 {"contentChanges", {{{"range", {{"start", from}, {"end", to}}},
                                                      {"text", lsp::toValidUtf8(rest.substr(std::min<std::size_t>(rest.size(), 4)))}}}}};
            break;
        }
        case 2:
            message["method"] = "textDocument/didClose";
            message["params"] = {{"textDocument", {{"uri", kUri}}}};
            break;
        case 3: {
            // Straight through the framing reader, as it comes from a pipe.
            int ends[2];
            if (rest.size() > 60000 || ::pipe(ends) != 0) continue;
            if (::write(ends[1], rest.data(), rest.size()) != static_cast<ssize_t>(rest.size())) std::abort();
            ::close(ends[1]);
            lsp::MessageReader reader(ends[0]);
            std::string body;
            for (lsp::Frame frame; (frame = reader.next(body)) != lsp::Frame::End;) {
                if (frame == lsp::Frame::Malformed) server.malformed();
                else server.handle(body);
            }
            ::close(ends[0]);
            continue;
        }
        case 4: server.handle(std::string(rest)); continue;
        case 5:
            // One of the last few requests, perhaps waiting its turn, perhaps answered.
            message["method"] = "$/cancelRequest";
            message["params"] = {{"id", requests - static_cast<int>(rest.size() % 3)}};
            break;
        default: {
            const json place = position(rest);
            message["id"] = ++requests;
            message["method"] = kRequests[static_cast<unsigned char>(step[0]) % std::size(kRequests)];
            message["params"] = {{"textDocument", {{"uri", kUri}}},
                                 {"position", place},
                                 {"range", {{"start", place}, {"end", position(rest.substr(std::min<std::size_t>(rest.size(), 2)))}}},
                                 {"context", {{"includeDeclaration", rest.size() % 2 == 0}}}};
            break;
        }
        }
        server.handle(message.dump());
        // Sometimes requests race the check, sometimes they wait for it.
        if (step.size() % 3 == 0) server.waitIdle();
    }
    server.waitIdle();
    // Raw bodies and frames may carry requests of their own: at least the
    // server's own are answered.
    if (answers < requests) std::abort();
    return 0;
}
