#include "lsp/checker.h"

namespace quillet::lsp {

Checker::Checker(Done done) : done_(std::move(done)), thread_([this] { work(); }) {}

Checker::~Checker() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void Checker::check(Job job) {
    {
        const std::lock_guard lock(mutex_);
        const std::string uri = job.uri;
        pending_.insert_or_assign(uri, std::move(job));
    }
    wake_.notify_one();
}

void Checker::waitIdle() {
    std::unique_lock lock(mutex_);
    idle_.wait(lock, [this] { return pending_.empty() && !busy_; });
}

void Checker::work() {
    for (;;) {
        Job job;
        {
            std::unique_lock lock(mutex_);
            busy_ = false;
            if (pending_.empty()) idle_.notify_all();
            wake_.wait(lock, [this] { return stopping_ || !pending_.empty(); });
            if (stopping_) return;
            job = std::move(pending_.begin()->second);
            pending_.erase(pending_.begin());
            busy_ = true;
        }
        done_(job.uri, analyse(std::move(job.snapshot), job.generation, job.aliasesPath, job.expectedWords));
    }
}

}  // namespace quillet::lsp
