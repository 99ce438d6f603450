#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "lsp/analysis.h"

namespace quillet::lsp {

// Lints documents on a thread of its own, so that requests are answered
// while a large definition is checked. Only the newest text of a document
// waits to be checked: a change supersedes the one before it.
class Checker {
public:
    struct Job {
        std::string uri;
        std::shared_ptr<const Snapshot> snapshot;
        std::uint64_t generation = 0;
        std::string aliasesPath;
        std::size_t expectedWords = 0;  // the last analysis's count, to size the index once
    };
    using Done = std::function<void(const std::string& uri, std::shared_ptr<const Analysis> analysis)>;

    explicit Checker(Done done);
    ~Checker();
    Checker(const Checker&) = delete;
    Checker& operator=(const Checker&) = delete;

    void check(Job job);
    // Waits until nothing is waiting or being checked (for tests).
    void waitIdle();

private:
    void work();

    Done done_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable idle_;
    std::map<std::string, Job> pending_;  // by document
    bool busy_ = false;
    bool stopping_ = false;
    std::thread thread_;  // last: starts once the rest is ready
};

}  // namespace quillet::lsp
