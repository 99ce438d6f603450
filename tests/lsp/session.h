#pragma once

#include <string>
#include <vector>

#include "lsp/server.h"

namespace quillet::lsp::testing {

// A server driven in-process, as a client would: every body it sends is
// kept, and checks are waited for, so that answers are deterministic.
class Session {
public:
    Session() : server_([this](std::string_view body) {
        sent_.push_back(json::parse(body));
        return true;
    }) {}

    // Initializes with the client capabilities and options given.
    json initialize(json capabilities = json::object(), json options = nullptr) {
        json params = {{"capabilities", std::move(capabilities)}};
        if (!options.is_null()) params["initializationOptions"] = std::move(options);
        json result = request("initialize", params);
        notify("initialized", json::object());
        return result;
    }
    void open(const std::string& uri, const std::string& text) {
        notify("textDocument/didOpen",
               {{"textDocument", {{"uri", uri}, {"languageId", "quillet"}, {"version", 1}, {"text", text}}}});
    }
    void notify(const std::string& method, json params) {
        server_.handle(json{{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}}.dump());
        server_.waitIdle();
    }
    // The whole response to a request.
    json call(const std::string& method, json params) {
        const int id = ++id_;
        server_.handle(json{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", std::move(params)}}.dump());
        server_.waitIdle();
        for (const json& message : sent_)
            if (message.contains("id") && message["id"] == id && !message.contains("method")) return message;
        return nullptr;
    }
    json request(const std::string& method, json params) { return call(method, std::move(params)).at("result"); }
    // A request at a position of the document `uri`.
    json at(const std::string& method, const std::string& uri, int line, int character, json extra = json::object()) {
        extra["textDocument"] = {{"uri", uri}};
        extra["position"] = {{"line", line}, {"character", character}};
        return request(method, std::move(extra));
    }
    // The last diagnostics published for `uri`.
    json diagnostics(const std::string& uri) const {
        json last;
        for (const json& message : sent_)
            if (message.value("method", "") == "textDocument/publishDiagnostics" && message["params"]["uri"] == uri)
                last = message["params"];
        return last;
    }
    Server& server() { return server_; }
    std::vector<json>& sent() { return sent_; }

private:
    std::vector<json> sent_;
    int id_ = 0;
    Server server_;
};

}  // namespace quillet::lsp::testing
