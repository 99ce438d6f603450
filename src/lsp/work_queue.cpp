#include "lsp/work_queue.h"

#include <sys/resource.h>
#include <unistd.h>

namespace quillet::lsp {

namespace {

// Of the scheduler's niceness levels (0 to 19): low enough that a thread
// answering a request runs first, not so low that a check starves while
// the machine is busy.
constexpr int kBackgroundNiceness = 10;

}  // namespace

WorkQueue::WorkQueue(Priority priority) : thread_([this, priority] { work(priority); }) {}

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

void WorkQueue::work(Priority priority) {
    // Linux gives each thread its own niceness; failing, the thread runs as
    // the others do.
    if (priority == Priority::Background)
        static_cast<void>(::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), kBackgroundNiceness));
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
