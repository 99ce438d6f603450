#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "lsp/analysis.h"
#include "lsp/work_queue.h"

namespace quillet::lsp {

// Lints documents on a thread of its own, so that requests are answered
// while a large definition is checked. Only the newest text of a document
// waits to be checked: a change supersedes the one before it, and stops the
// check of an older text already under way.
class Checker {
public:
    struct Job {
        std::string uri;
        std::shared_ptr<const Snapshot> snapshot;
        std::uint64_t generation = 0;
        std::string aliasesPath;
        // The document's last analysis: an edit within one keyword reads
        // that keyword again over it, and a whole reading sizes its word
        // index by it.
        std::shared_ptr<const Analysis> previous;
    };
    using Done = std::function<void(const std::string& uri, std::shared_ptr<const Analysis> analysis)>;

    explicit Checker(Done done) : done_(std::move(done)) {}

    void check(Job job);
    // Waits until nothing is waiting or being checked (for tests).
    void waitIdle() { queue_.waitIdle(); }

private:
    void run(const std::string& uri);

    Done done_;
    std::mutex mutex_;
    std::map<std::string, Job> pending_;  // by document: the newest text only
    std::string running_;  // the document being checked, if any
    std::atomic<bool> stop_ = false;  // its check is moot
    WorkQueue queue_;  // last: its thread stops before the rest goes
};

}  // namespace quillet::lsp
