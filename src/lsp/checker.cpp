#include "lsp/checker.h"

namespace quillet::lsp {

void Checker::check(Job job) {
    std::string uri = job.uri;
    {
        const std::lock_guard lock(mutex_);
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
    }
    done_(job.uri, analyse(std::move(job.snapshot), job.generation, job.aliasesPath, job.expectedWords));
}

}  // namespace quillet::lsp
