#include "lsp/server.h"

#include <malloc.h>

#include <limits>
#include <utility>

#include "format/formatter.h"
#include "lsp/message_parser.h"
#include "lsp/requests.h"
#include "lsp/serve.h"

namespace quillet::lsp {

namespace {

// The member at the end of a chain of keys, or null where one is missing.
const json& member(const json& object, std::initializer_list<const char*> keys) {
    static const json kNone;
    const json* at = &object;
    for (const char* key : keys) {
        if (!at->is_object()) return kNone;
        const auto found = at->find(key);
        if (found == at->end()) return kNone;
        at = &*found;
    }
    return *at;
}

Encoding chooseEncoding(const json& offered) {
    if (offered.is_array())
        for (const json& name : offered) {
            if (name == "utf-8") return Encoding::Utf8;
            if (name == "utf-16") return Encoding::Utf16;
            if (name == "utf-32") return Encoding::Utf32;
        }
    return Encoding::Utf16;
}

const char* encodingName(Encoding encoding) {
    switch (encoding) {
    case Encoding::Utf8: return "utf-8";
    case Encoding::Utf16: return "utf-16";
    case Encoding::Utf32: return "utf-32";
    }
    return "utf-16";
}

// Offsets are kept in 32 bits.
constexpr std::size_t kLargestDocument = std::numeric_limits<std::uint32_t>::max();

}  // namespace

const Server::Method Server::kMethods[] = {
    {"initialize", &Server::initialize, true},
    {"initialized", &Server::initialized, false},
    {"shutdown", &Server::shutdown, true},
    {"exit", &Server::exit, false},
    {"textDocument/didOpen", &Server::didOpen, false},
    {"textDocument/didChange", &Server::didChange, false},
    {"textDocument/didClose", &Server::didClose, false},
    {"textDocument/didSave", &Server::ignore, false},
    {"$/cancelRequest", &Server::cancelRequest, false},
    {"workspace/didChangeConfiguration", &Server::didChangeConfiguration, false},
    {"textDocument/hover", &Server::hover, true},
    {"textDocument/definition", &Server::definition, true},
    {"textDocument/references", &Server::references, true},
    {"textDocument/documentSymbol", nullptr, true, &writeDocumentSymbols},
    {"textDocument/completion", &Server::completion, true},
    {"textDocument/codeAction", &Server::codeAction, true},
    {"textDocument/semanticTokens/full", nullptr, true, &writeSemanticTokens},
    {"textDocument/formatting", &Server::formatting, true},
};

Server::Server(Send send)
    : send_(std::move(send)),
      checker_([this](const std::string& uri, std::shared_ptr<const Analysis> analysis) {
          checked(uri, std::move(analysis));
      }) {}

bool Server::connected() const {
    const std::lock_guard lock(sendMutex_);
    return connected_;
}

void Server::send(const json& message) {
    std::string body;
    appendJson(body, message);
    sendBody(body);
}

void Server::sendBody(std::string_view body) {
    const std::lock_guard lock(sendMutex_);
    if (connected_ && !send_(body)) connected_ = false;
}

void Server::error(const json& id, int code, std::string message) {
    send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", std::move(message)}}}});
}

void Server::malformed() { error(nullptr, kParseError, "Parse error: malformed message header"); }

void Server::handle(std::string body) {
    json message;
    // A client may send its buffer's bytes unchecked: they are read as a
    // decoder would show them.
    if (!wellFormedUtf8(body)) body = toValidUtf8(body);
    const bool parsed = parseMessage(std::move(body), message);
    if (!parsed) return error(nullptr, kParseError, "Parse error: the message is not valid JSON");
    dispatch(message);
}

void Server::dispatch(json& message) {
    const json& id = member(message, {"id"});
    const bool hasId = message.is_object() && message.contains("id") && (id.is_number_integer() || id.is_string());
    const json& method = member(message, {"method"});
    if (!method.is_string()) {
        // A client's answer to the server's configuration request.
        if (hasId && id == requests_ && askedConfiguration_ && message.contains("result")) {
            askedConfiguration_ = false;
            const json& result = message["result"];
            if (result.is_array() && !result.empty()) configure(result.front());
            return;
        }
        if (!hasId || !(message.contains("result") || message.contains("error")))
            error(hasId ? id : json(nullptr), kInvalidRequest, "Invalid request: no method");
        return;
    }
    const Method* found = nullptr;
    for (const Method& known : kMethods)
        if (known.name == method.get_ref<const std::string&>()) found = &known;
    if (found == nullptr) {
        if (hasId) error(id, kMethodNotFound, "Method not found: " + method.get<std::string>());
        return;
    }
    if (!initialized_ && found->name != "initialize" && found->name != "exit") {
        if (hasId) error(id, kServerNotInitialized, "Server not initialized");
        return;
    }
    if (shutdown_ && found->name != "exit") {
        if (hasId) error(id, kInvalidRequest, "Invalid request: the server is shutting down");
        return;
    }
    json params = std::move(message["params"]);
    const json answerId = hasId ? id : json();
    if (found->whole != nullptr) {
        if (!hasId) return;
        {
            const std::lock_guard lock(wholeMutex_);
            waitingWhole_[answerId.dump()] = false;
        }
        wholeDocumentAnswers_.post([this, handler = found->whole, answerId, params = std::move(params)]() mutable {
            answerWhole(answerId, handler, params);
        });
        return;
    }
    answer(answerId, found->handler, params);
}

// `id` is null for a notification, which gets no answer.
void Server::answer(const json& id, Handler handler, json& params) {
    json result;
    try {
        result = (this->*handler)(params);
    } catch (const json::exception&) {
        if (!id.is_null()) error(id, kInvalidParams, "Invalid params");
        return;
    }
    if (!id.is_null()) send({{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}});
}

void Server::answerWhole(const json& id, WholeHandler handler, json& params) {
    {
        const std::lock_guard lock(wholeMutex_);
        const auto found = waitingWhole_.find(id.dump());
        const bool cancelled = found != waitingWhole_.end() && found->second;
        if (found != waitingWhole_.end()) waitingWhole_.erase(found);
        if (cancelled) return error(id, kRequestCancelled, "Request cancelled");
    }
    std::shared_ptr<const Analysis> analysis;
    try {
        analysis = analysisOf(params);
    } catch (const json::exception&) {
        return error(id, kInvalidParams, "Invalid params");
    }
    std::string body = R"({"jsonrpc":"2.0","id":)";
    appendJson(body, id);
    body += R"(,"result":)";
    if (analysis == nullptr) body += "null";
    else handler(*analysis, viewOf(*analysis->snapshot), body);
    body += '}';
    sendBody(body);
    // An answer the size of a large document would leave its memory with
    // this thread's allocator; a small one's is kept, as the checks' is (see
    // checked()).
    if (body.size() >= Snapshot::kLargeText) {
        std::string().swap(body);
        ::malloc_trim(0);
    }
}

json Server::initialize(json& params) {
    encoding_ = chooseEncoding(member(params, {"capabilities", "general", "positionEncodings"}));
    canAskConfiguration_ = member(params, {"capabilities", "workspace", "configuration"}) == true;
    if (const json& root = member(params, {"rootUri"}); root.is_string()) root_ = pathOfUri(root.get<std::string>());
    else if (const json& path = member(params, {"rootPath"}); path.is_string()) root_ = path.get<std::string>();
    configure(member(params, {"initializationOptions"}));
    initialized_ = true;
    return {{"capabilities",
             {{"positionEncoding", encodingName(encoding_)},
              {"textDocumentSync", {{"openClose", true}, {"change", 2}}},
              {"hoverProvider", true},
              {"definitionProvider", true},
              {"referencesProvider", true},
              {"documentSymbolProvider", true},
              {"completionProvider", json::object()},
              {"codeActionProvider", {{"codeActionKinds", {"quickfix"}}}},
              {"semanticTokensProvider", {{"legend", semanticTokenLegend()}, {"full", true}}},
              {"documentFormattingProvider", true}}},
            {"serverInfo", {{"name", "quillet-lsp"}, {"version", QUILLET_VERSION}}}};
}

json Server::initialized(json&) {
    askConfiguration();
    return nullptr;
}

void Server::askConfiguration() {
    if (!canAskConfiguration_) return;
    askedConfiguration_ = true;
    send({{"jsonrpc", "2.0"},
          {"id", ++requests_},
          {"method", "workspace/configuration"},
          {"params", {{"items", {{{"section", "quillet"}}}}}}});
}

// Settings: {"aliases": "path of the aliases file"}; a relative path is
// taken from the workspace's root.
void Server::configure(const json& settings) {
    const json& aliases = member(settings, {"aliases"});
    if (!aliases.is_string()) return;
    std::string path = aliases.get<std::string>();
    if (!path.empty() && path.front() != '/' && !root_.empty()) path = root_ + "/" + path;
    const std::lock_guard lock(mutex_);
    if (path == aliasesPath_) return;
    aliasesPath_ = std::move(path);
    for (auto& [uri, document] : documents_) schedule(uri, document);
}

json Server::shutdown(json&) {
    shutdown_ = true;
    return nullptr;
}

json Server::exit(json&) {
    exitStatus_ = shutdown_ ? kExitAfterShutdown : kExitWithoutShutdown;
    return nullptr;
}

void Server::schedule(const std::string& uri, Document& document) {
    document.generation = ++generation_;
    checker_.check({uri, document.snapshot, document.generation, aliasesPath_, document.analysis});
}

json Server::didOpen(json& params) {
    json& document = params.at("textDocument");
    std::string text = std::move(document.at("text").get_ref<std::string&>());
    if (text.size() > kLargestDocument) return nullptr;
    const std::string uri = document.at("uri").get<std::string>();
    const auto version = document.at("version").get<std::int64_t>();
    auto snapshot = std::make_shared<const Snapshot>(text, version);
    std::string().swap(text);
    const std::lock_guard lock(mutex_);
    Document& open = documents_[uri];
    open.opening = ++openings_;
    open.snapshot = std::move(snapshot);
    schedule(uri, open);
    return nullptr;
}

json Server::didChange(json& params) {
    std::string uri = params.at("textDocument").at("uri").get<std::string>();
    const auto version = params.at("textDocument").at("version").get<std::int64_t>();
    std::uint64_t opening = 0;
    {
        const std::lock_guard lock(mutex_);
        const auto found = documents_.find(uri);
        if (found == documents_.end()) return nullptr;
        opening = found->second.opening;
    }
    edits_.post([this, uri = std::move(uri), opening, version, changes = std::move(params.at("contentChanges")),
                 encoding = encoding_.load()] { applyChanges(uri, opening, version, changes, encoding); });
    return nullptr;
}

// Each change applies to the text the one before it left; a change that
// cannot be applied leaves the document as it was.
void Server::applyChanges(const std::string& uri, std::uint64_t opening, std::int64_t version, const json& changes,
                          Encoding encoding) {
    std::unique_lock lock(mutex_);
    const auto found = documents_.find(uri);
    if (found == documents_.end() || found->second.opening != opening) return;
    std::shared_ptr<const Snapshot> snapshot = found->second.snapshot;
    lock.unlock();
    try {
        for (const json& change : changes) {
            const std::string& replacement = change.at("text").get_ref<const std::string&>();
            if (!change.contains("range")) {
                if (replacement.size() > kLargestDocument) return;
                snapshot = std::make_shared<const Snapshot>(replacement, version);
                continue;
            }
            const TextView view{snapshot->text, snapshot->lines, encoding};
            const std::size_t start = view.offset(change.at("range").at("start"));
            const std::size_t end = std::max(start, view.offset(change.at("range").at("end")));
            if (snapshot->text.size() - (end - start) + replacement.size() > kLargestDocument) return;
            snapshot = std::make_shared<const Snapshot>(*snapshot, start, end - start,
                                                        replacement, version);
        }
    } catch (const json::exception&) {
        return;
    }
    lock.lock();
    const auto still = documents_.find(uri);
    if (still == documents_.end() || still->second.opening != opening) return;
    still->second.snapshot = std::move(snapshot);
    schedule(uri, still->second);
}

json Server::didClose(json& params) {
    const std::string uri = params.at("textDocument").at("uri").get<std::string>();
    {
        const std::lock_guard lock(mutex_);
        if (documents_.erase(uri) == 0) return nullptr;
    }
    send({{"jsonrpc", "2.0"},
          {"method", "textDocument/publishDiagnostics"},
          {"params", {{"uri", uri}, {"diagnostics", json::array()}}}});
    return nullptr;
}

json Server::didChangeConfiguration(json& params) {
    const json& settings = member(params, {"settings", "quillet"});
    if (settings.is_object()) configure(settings);
    else askConfiguration();
    return nullptr;
}

json Server::ignore(json&) { return nullptr; }

// Only a whole-document answer not yet begun is worth giving up; any other
// is answered as soon as it is read, or is being made.
json Server::cancelRequest(json& params) {
    const std::lock_guard lock(wholeMutex_);
    const auto found = waitingWhole_.find(params.at("id").dump());
    if (found != waitingWhole_.end()) found->second = true;
    return nullptr;
}

void Server::checked(const std::string& uri, std::shared_ptr<const Analysis> analysis) {
    Encoding encoding;
    std::shared_ptr<const Analysis> replaced;
    {
        const std::lock_guard lock(mutex_);
        const auto found = documents_.find(uri);
        // A newer change or a close has made this check moot.
        if (found == documents_.end() || found->second.generation != analysis->generation) return;
        replaced = std::exchange(found->second.analysis, analysis);
        encoding = encoding_;
    }
    const Snapshot& snapshot = *analysis->snapshot;
    const TextView view{snapshot.text, snapshot.lines, encoding};
    send({{"jsonrpc", "2.0"},
          {"method", "textDocument/publishDiagnostics"},
          {"params", {{"uri", uri}, {"version", snapshot.version}, {"diagnostics", diagnosticsOf(analysis->problems, uri, view)}}}});
    if (analysis->aliases) {
        const AliasesFile& aliases = *analysis->aliases;
        const std::string aliasesUri = uriOfPath(aliases.path);
        const TextView aliasesView{aliases.document, aliases.lines, encoding};
        send({{"jsonrpc", "2.0"},
              {"method", "textDocument/publishDiagnostics"},
              {"params", {{"uri", aliasesUri}, {"diagnostics", diagnosticsOf(aliases.problems, aliasesUri, aliasesView)}}}});
    }
    // The replaced check is freed once the diagnostics are out: a large
    // model takes a while. What a large document's check leaves with this
    // thread's allocator (its own temporaries, and the replaced model) is
    // given back to the system; a small one's is kept for the next check,
    // as taking fresh pages from the system costs more.
    if (snapshot.text.size() >= Snapshot::kLargeText) {
        replaced.reset();
        ::malloc_trim(0);
    }
}

std::shared_ptr<const Analysis> Server::analysisOf(const json& params) const {
    const std::string uri = params.at("textDocument").at("uri").get<std::string>();
    const std::lock_guard lock(mutex_);
    const auto found = documents_.find(uri);
    return found == documents_.end() ? nullptr : found->second.analysis;
}

json Server::hover(json& params) {
    const auto analysis = analysisOf(params);
    if (!analysis) return nullptr;
    const TextView view = viewOf(*analysis->snapshot);
    return lsp::hover(*analysis, view.offset(params.at("position")), view);
}

json Server::definition(json& params) {
    const auto analysis = analysisOf(params);
    if (!analysis) return nullptr;
    const TextView view = viewOf(*analysis->snapshot);
    return lsp::definition(*analysis, params.at("textDocument").at("uri").get<std::string>(), view.offset(params.at("position")), view);
}

json Server::references(json& params) {
    const auto analysis = analysisOf(params);
    if (!analysis) return nullptr;
    const TextView view = viewOf(*analysis->snapshot);
    const bool withDeclaration = member(params, {"context", "includeDeclaration"}) == true;
    return lsp::references(*analysis, params.at("textDocument").at("uri").get<std::string>(), view.offset(params.at("position")),
                           withDeclaration, view);
}

json Server::completion(json& params) {
    const auto analysis = analysisOf(params);
    if (!analysis) return nullptr;
    const TextView view = viewOf(*analysis->snapshot);
    return lsp::completion(*analysis, view.offset(params.at("position")));
}

json Server::codeAction(json& params) {
    const auto analysis = analysisOf(params);
    if (!analysis) return nullptr;
    const TextView view = viewOf(*analysis->snapshot);
    const std::size_t start = view.offset(params.at("range").at("start"));
    const std::size_t end = std::max(start, view.offset(params.at("range").at("end")));
    return codeActions(*analysis, params.at("textDocument").at("uri").get<std::string>(), {start, end - start}, view);
}

}  // namespace quillet::lsp

namespace quillet::lsp {

// The current text, not the last checked one: the edit applies to it. A
// definition that quillet-format refuses gets no edit; its diagnostics say why.
json Server::formatting(json& params) {
    const std::string uri = params.at("textDocument").at("uri").get<std::string>();
    edits_.waitIdle();
    std::shared_ptr<const Snapshot> snapshot;
    {
        const std::lock_guard lock(mutex_);
        const auto found = documents_.find(uri);
        if (found == documents_.end()) return nullptr;
        snapshot = found->second.snapshot;
    }
    std::string formatted;
    std::vector<format::Problem> problems;
    const std::string text = snapshot->text.copy();
    if (!format::formatDefinition(text, formatted, problems)) return nullptr;
    if (formatted == text) return json::array();
    const TextView view = viewOf(*snapshot);
    return json::array({{{"range", view.range({0, snapshot->text.size()})}, {"newText", std::move(formatted)}}});
}

}  // namespace quillet::lsp
