#include "lint/json_output.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace quillet::lint {

namespace {

using json = nlohmann::ordered_json;

const char* severityName(Severity severity) {
    switch (severity) {
    case Severity::Error: return "error";
    case Severity::Warning: return "warning";
    case Severity::Note: return "note";
    }
    return "note";
}

// Definitions may hold any bytes; invalid UTF-8 is shown as U+FFFD.
void dump(std::ostream& out, const json& value) {
    out << value.dump(2, ' ', false, json::error_handler_t::replace) << "\n";
}

json entry(const FileReport& report, Severity severity, RuleId rule, Position position, const std::string& message) {
    return {{"file", report.name}, {"line", position.line}, {"column", position.column},
            {"severity", severityName(severity)}, {"rule", kRules[rule].name}, {"message", message}};
}

// A relative reference for a path: every byte but the unreserved ones and
// the slash percent-encoded.
std::string uriOf(const FileReport& report) {
    if (report.path.empty() && report.name == "<stdin>") return "stdin";
    static const char* hex = "0123456789ABCDEF";
    std::string uri;
    for (unsigned char c : report.name) {
        if (std::isalnum(c) || c == '-' || c == '.' || c == '_' || c == '~' || c == '/') {
            uri.push_back(static_cast<char>(c));
        } else {
            uri.push_back('%');
            uri.push_back(hex[c >> 4]);
            uri.push_back(hex[c & 15]);
        }
    }
    return uri;
}

json location(const std::string& uri, Position position) {
    return {{"physicalLocation",
             {{"artifactLocation", {{"uri", uri}}},
              {"region", {{"startLine", std::max(position.line, 1)}, {"startColumn", std::max(position.column, 1)}}}}}};
}

}  // namespace

void writeJson(std::ostream& out, const std::vector<FileReport>& reports) {
    json all = json::array();
    for (const FileReport& report : reports) {
        for (const Diagnostic& diagnostic : report.diagnostics) {
            all.push_back(entry(report, diagnostic.severity, diagnostic.rule, diagnostic.position, diagnostic.message));
            for (const Note& note : diagnostic.notes)
                all.push_back(entry(report, Severity::Note, diagnostic.rule, note.position, note.message));
        }
    }
    dump(out, all);
}

void writeSarif(std::ostream& out, const std::vector<FileReport>& reports) {
    json rules = json::array();
    for (const Rule& rule : kRules)
        rules.push_back({{"id", rule.name},
                         {"shortDescription", {{"text", rule.summary}}},
                         {"defaultConfiguration", {{"level", rule.kind == RuleKind::Error ? "error" : "warning"}}}});
    json results = json::array();
    for (const FileReport& report : reports) {
        const std::string uri = uriOf(report);
        for (const Diagnostic& diagnostic : report.diagnostics) {
            json result = {{"ruleId", kRules[diagnostic.rule].name},
                           {"ruleIndex", diagnostic.rule},
                           {"level", severityName(diagnostic.severity)},
                           {"message", {{"text", diagnostic.message}}},
                           {"locations", json::array({location(uri, diagnostic.position)})}};
            json related = json::array();
            for (const Note& note : diagnostic.notes) {
                json place = location(uri, note.position);
                place["id"] = related.size();
                place["message"] = {{"text", note.message}};
                related.push_back(std::move(place));
            }
            if (!related.empty()) result["relatedLocations"] = std::move(related);
            results.push_back(std::move(result));
        }
    }
    dump(out, {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
               {"version", "2.1.0"},
               {"runs", json::array({{{"tool", {{"driver", {{"name", "quillet-lint"},
                                                            {"version", QUILLET_VERSION},
                                                            {"rules", std::move(rules)}}}}},
                                      {"results", std::move(results)}}})}});
}

}  // namespace quillet::lint
