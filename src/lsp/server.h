#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "lsp/checker.h"
#include "lsp/protocol.h"

namespace quillet::lsp {

// The language server's state and its answers to each message. Messages
// arrive through handle(), one at a time; everything it sends (answers, and
// the diagnostics that the checker's thread publishes) goes to `send`, one
// whole JSON body at a time.
class Server {
public:
    using Send = std::function<bool(std::string_view body)>;

    explicit Server(Send send);

    // Takes the body, so that a large document's message is freed as soon
    // as it is parsed.
    void handle(std::string body);
    // For a message whose framing was broken.
    void malformed();
    // Set by `exit`: the process's exit status.
    std::optional<int> exitStatus() const { return exitStatus_; }
    // False once the client's input could not be written to.
    bool connected() const;
    // Waits until every change has been applied and checked, its
    // diagnostics sent, and every request answered.
    void waitIdle() {
        edits_.waitIdle();
        checker_.waitIdle();
        wholeDocumentAnswers_.waitIdle();
    }

private:
    struct Document {
        std::uint64_t opening = 0;  // which opening of the URI: a change posted for an earlier one is dropped
        std::shared_ptr<const Snapshot> snapshot;
        std::uint64_t generation = 0;
        std::shared_ptr<const Analysis> analysis;  // the last complete one
    };
    using Handler = json (Server::*)(json& params);
    // Appends the result's JSON text for the document's last analysis to `out`.
    using WholeHandler = void (*)(const Analysis& analysis, const TextView& view, std::string& out);
    struct Method {
        std::string_view name;
        Handler handler;
        bool request;  // answered, unlike a notification
        // For an answer that covers the whole document, instead of
        // `handler`: a large one's takes seconds, so it is made on a thread
        // of its own, not ahead of the requests that come after it (editors
        // ask for these after every change).
        WholeHandler whole = nullptr;
    };
    static const Method kMethods[];

    void send(const json& message);
    void sendBody(std::string_view body);
    void error(const json& id, int code, std::string message);
    void dispatch(json& message);
    void answer(const json& id, Handler handler, json& params);
    void answerWhole(const json& id, WholeHandler handler, json& params);
    void applyChanges(const std::string& uri, std::uint64_t opening, std::int64_t version, const json& changes,
                      Encoding encoding);
    void checked(const std::string& uri, std::shared_ptr<const Analysis> analysis);
    void schedule(const std::string& uri, Document& document);
    void askConfiguration();
    void configure(const json& settings);
    // The last analysis of the document named in the parameters.
    std::shared_ptr<const Analysis> analysisOf(const json& params) const;
    TextView viewOf(const Snapshot& snapshot) const { return {snapshot.text, snapshot.lines, encoding_}; }

    json initialize(json& params);
    json initialized(json& params);
    json shutdown(json& params);
    json exit(json& params);
    json didOpen(json& params);
    json didChange(json& params);
    json didClose(json& params);
    json didChangeConfiguration(json& params);
    json hover(json& params);
    json definition(json& params);
    json references(json& params);
    json completion(json& params);
    json codeAction(json& params);
    json formatting(json& params);
    json cancelRequest(json& params);
    json ignore(json& params);

    Send send_;
    mutable std::mutex sendMutex_;
    bool connected_ = true;

    mutable std::mutex mutex_;  // guards what the edit and checker threads see
    std::map<std::string, Document> documents_;
    std::uint64_t generation_ = 0;
    std::uint64_t openings_ = 0;
    std::string aliasesPath_;
    std::string root_;
    std::atomic<Encoding> encoding_ = Encoding::Utf16;

    bool initialized_ = false;
    bool shutdown_ = false;
    bool askedConfiguration_ = false;
    bool canAskConfiguration_ = false;
    int requests_ = 0;  // sent to the client
    std::optional<int> exitStatus_;
    // Whole-document requests not yet begun, by their ID's JSON text: true
    // once the client has cancelled one (it has moved on to a newer text).
    std::mutex wholeMutex_;
    std::map<std::string, bool> waitingWhole_;
    Checker checker_;  // its thread stops before the rest goes
    // A change is applied on a thread of its own: copying a large document's
    // text for its new version takes tens of milliseconds, which would hold
    // up the requests that follow it. It stops before the checker, as it
    // schedules checks.
    WorkQueue edits_;
    WorkQueue wholeDocumentAnswers_;  // last: its answers read everything above
};

}  // namespace quillet::lsp
