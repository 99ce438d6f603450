#include "lsp/serve.h"

#include "lsp/framing.h"
#include "lsp/server.h"

namespace quillet::lsp {

int serve(int in, int out) {
    Server server([out](std::string_view body) { return writeMessage(out, body); });
    MessageReader reader(in);
    std::string body;
    while (server.connected()) {
        const Frame frame = reader.next(body);
        if (frame == Frame::End) break;
        if (frame == Frame::Malformed) {
            server.malformed();
            continue;
        }
        server.handle(std::move(body));
        body.clear();
        if (const auto status = server.exitStatus()) return *status;
    }
    return kExitWithoutShutdown;
}

}  // namespace quillet::lsp
