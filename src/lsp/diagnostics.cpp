#include "lsp/requests.h"

namespace quillet::lsp {

namespace {

int severityOf(lint::Severity severity) {
    switch (severity) {
    case lint::Severity::Error: return 1;
    case lint::Severity::Warning: return 2;
    case lint::Severity::Note: return 3;
    }
    return 1;
}

}  // namespace

json diagnosticOf(const Problem& problem, const std::string& uri, const TextView& view) {
    const lint::Diagnostic& diagnostic = problem.diagnostic;
    json item = {{"range", view.range(problem.span)},
                 {"severity", severityOf(diagnostic.severity)},
                 {"code", std::string(lint::rule(diagnostic.rule).name)},
                 {"source", "quillet-lint"},
                 {"message", diagnostic.message}};
    if (!diagnostic.notes.empty()) {
        json related = json::array();
        for (std::size_t i = 0; i < diagnostic.notes.size(); ++i)
            related.push_back({{"location", location(uri, view, problem.notes[i])},
                               {"message", diagnostic.notes[i].message}});
        item["relatedInformation"] = std::move(related);
    }
    return item;
}

json diagnosticsOf(const std::vector<Problem>& problems, const std::string& uri, const TextView& view) {
    json list = json::array();
    for (const Problem& problem : problems) list.push_back(diagnosticOf(problem, uri, view));
    return list;
}

}  // namespace quillet::lsp
