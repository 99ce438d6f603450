#include "lsp/work_queue.h"

namespace quillet::lsp {

WorkQueue::WorkQueue() : thread_([this] { work(); }) {}

WorkQueue::~WorkQueue() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void WorkQueue::post(std::function<void()> task) {
    {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    wake_.notify_one();
}

void WorkQueue::waitIdle() {
    std::unique_lock lock(mutex_);
    idle_.wait(lock, [this] { return tasks_.empty() && !busy_; });
}

void WorkQueue::work() {
    for (;;) {
        std::function<void()> task;
        {
            std::unique_lock lock(mutex_);
            busy_ = false;
            if (tasks_.empty()) idle_.notify_all();
            wake_.wait(lock, [this] { return stopping_ || !tasks_.empty(); });
            if (stopping_) return;
            task = std::move(tasks_.front());
            tasks_.pop_front();
            busy_ = true;
        }
        task();
    }
}

}  // namespace quillet::lsp
