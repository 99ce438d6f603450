#include "lsp/checker.h"

namespace quillet::lsp {

void Checker::check(Job job) {
    std::string uri = job.uri;
    {
        const std::lock_guard lock(mutex_);
        if (uri == running_) stop_ = true;
        pending_.insert_or_assign(uri, std::move(job));
    }
    queue_.post([this, uri = std::move(uri)] { run(uri); });
}

// A document changed again before its check began has one job for its
// newest text; the tasks posted for the older ones find nothing to do.
void Checker::run(const std::string& uri) {
    Job job;
    {
        const std::lock_guard lock(mutex_);
        const auto found = pending_.find(uri);
        if (found == pending_.end()) return;
        job = std::move(found->second);
        pending_.erase(found);
        running_ = uri;
        stop_ = false;
    }
    // A stopped check still reaches `done_`, which drops it as older than
    // the document's newest version.
    std::shared_ptr<const Analysis> analysis;
    if (job.previous != nullptr) analysis = reanalyse(*job.previous, job.snapshot, job.generation, job.aliasesPath);
    const std::size_t words = job.previous == nullptr ? 0 : job.previous->words.size();
    // Let go before `done_`, which gives a large document's freed memory
    // back to the system.
    job.previous.reset();
    if (analysis == nullptr) analysis = analyse(std::move(job.snapshot), job.generation, job.aliasesPath, words, &stop_);
    {
        const std::lock_guard lock(mutex_);
        running_.clear();
    }
    done_(job.uri, std::move(analysis));
}

}  // namespace quillet::lsp
