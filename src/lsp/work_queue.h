#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace quillet::lsp {

// Runs the tasks posted to it one after the other, in the order they came,
// on a thread of its own.
class WorkQueue {
public:
    WorkQueue();
    ~WorkQueue();
    WorkQueue(const WorkQueue&) = delete;
    WorkQueue& operator=(const WorkQueue&) = delete;

    void post(std::function<void()> task);
    // Waits until every task posted has run.
    void waitIdle();

private:
    void work();

    std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable idle_;
    std::deque<std::function<void()>> tasks_;
    bool busy_ = false;
    bool stopping_ = false;
    std::thread thread_;  // last: starts once the rest is ready
};

}  // namespace quillet::lsp
