#include "lint/json_output.h"

#include <nlohmann/json.hpp>

#include "companion/percent_encoding.h"

#include <ostream>

namespace quillet::lint {

namespace {

using json = nlohmann::ordered_json;

// Definitions may hold any bytes; invalid UTF-8 is shown as U+FFFD.
void dump(std::ostream& out, const json& value) {
    out << value.dump(2, ' ', false, json::error_handler_t::replace) << "\n";
}

json entry(const FileReport& report, Severity severity, RuleId rule, Position position, const std::string& message) {
    return {{"file", report.name}, {"line", position.line}, {"column", position.column},
            {"severity", companion::severityName(severity)}, {"rule", lint::rule(rule).name}, {"message", message}};
}

// An absolute path as a file: URI; a relative one, as given, as a reference
// against SRCROOT, the directory quillet-lint ran in.
json artifactLocation(const FileReport& report) {
    if (report.path.empty() && report.name == "<stdin>") return {{"uri", "stdin"}};
    if (report.name.starts_with('/')) return {{"uri", "file://" + companion::percentEncoded(report.name)}};
    return {{"uri", companion::percentEncoded(report.name)}, {"uriBaseId", "SRCROOT"}};
}

json location(const json& artifact, Position position) {
    return {{"physicalLocation",
             {{"artifactLocation", artifact},
              {"region", {{"startLine", std::max(position.line, 1)}, {"startColumn", std::max(position.column, 1)}}}}}};
}

json fixOf(const json& artifact, const Fix& fix) {
    const int column = std::max(fix.position.column, 1);
    return {{"description", {{"text", "Replace with '" + fix.replacement + "'"}}},
            {"artifactChanges",
             json::array({{{"artifactLocation", artifact},
                           {"replacements",
                            json::array({{{"deletedRegion",
                                           {{"startLine", std::max(fix.position.line, 1)},
                                            {"startColumn", column},
                                            {"endColumn", column + static_cast<int>(fix.length)}}},
                                          {"insertedContent", {{"text", fix.replacement}}}}})}}})}};
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
        const json artifact = artifactLocation(report);
        for (const Diagnostic& diagnostic : report.diagnostics) {
            json result = {{"ruleId", rule(diagnostic.rule).name},
                           {"ruleIndex", index(diagnostic.rule)},
                           {"level", companion::severityName(diagnostic.severity)},
                           {"message", {{"text", diagnostic.message}}},
                           {"locations", json::array({location(artifact, diagnostic.position)})}};
            json related = json::array();
            for (const Note& note : diagnostic.notes) {
                json place = location(artifact, note.position);
                place["id"] = related.size();
                place["message"] = {{"text", note.message}};
                related.push_back(std::move(place));
            }
            if (!related.empty()) result["relatedLocations"] = std::move(related);
            json fixes = json::array();
            for (const Fix& fix : diagnostic.fixes) fixes.push_back(fixOf(artifact, fix));
            if (!fixes.empty()) result["fixes"] = std::move(fixes);
            results.push_back(std::move(result));
        }
    }
    dump(out, {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
               {"version", "2.1.0"},
               {"runs", json::array({{{"tool", {{"driver", {{"name", "quillet-lint"},
                                                            {"version", QUILLET_VERSION},
                                                            {"rules", std::move(rules)}}}}},
                                      {"originalUriBaseIds",
                                       {{"SRCROOT",
                                         {{"description", {{"text", "The directory quillet-lint was run in."}}}}}}},
                                      {"results", std::move(results)}}})}});
}

}  // namespace quillet::lint
