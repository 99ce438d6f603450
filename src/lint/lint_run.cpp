#include "lint/lint_run.h"

#include <unistd.h>

#include <cstring>
#include <ostream>
#include <limits>
#include <optional>
#include <unordered_set>

#include "companion/exit_code.h"
#include "companion/file_text.h"
#include "lint/alias_check.h"
#include "lint/definition_linter.h"
#include "lint/json_output.h"
#include "lint/text_output.h"

namespace quillet::lint {

namespace {

bool cannotRead(std::ostream& err, const std::string& path, int error) {
    err << "quillet-lint: error: cannot read '" << path << "': " << std::strerror(error) << "\n";
    return false;
}

// The whole file, or false after reporting why not.
bool readWhole(const std::string& path, std::string& content, std::ostream& err) {
    int reason = 0;
    return companion::readFileText(path, content, reason) || cannotRead(err, path, reason);
}

// Lints one definition. A regular file is read as a stream and read again
// for the lines shown; standard input and pipes are kept.
std::optional<FileReport> lintFile(const std::string& file, std::size_t maxErrors,
                                   std::unordered_set<std::string>* keywords, std::ostream& err) {
    FileReport report;
    report.name = file == "-" ? "<stdin>" : file;
    companion::InputFile input;
    int reason = 0;
    if (!(file == "-" ? input.adopt(::dup(STDIN_FILENO), reason) : input.open(file, reason))) {
        cannotRead(err, report.name, reason);
        return std::nullopt;
    }
    DefinitionLinter linter(maxErrors == 0 ? std::numeric_limits<std::size_t>::max() : maxErrors);
    if (input.regular()) {
        report.path = file;
        LineReader lines(input.fd());
        linter.read(lines);
    } else {
        if (!companion::readFileText(input, report.content, reason)) {
            cannotRead(err, report.name, reason);
            return std::nullopt;
        }
        LineReader lines(report.content);
        linter.read(lines);
    }
    report.diagnostics = linter.takeDiagnostics();
    report.errorsNotShown = linter.errorsNotKept();
    report.firstErrorNotShown = linter.firstErrorNotKept();
    if (keywords != nullptr)
        for (const KeywordDef* keyword : linter.definitions().keywords) keywords->emplace(keyword->name);
    return report;
}

bool before(Position a, Position b) { return std::pair(a.line, a.column) < std::pair(b.line, b.column); }

// Drops warnings that are off, raises the rest under --werror (the misreading
// ones under --werror-misreading), and keeps the first --max-errors errors of
// the run. One note for the whole run, in the file of the first error not
// shown, counts the others.
void applyOptions(const Options& options, std::vector<FileReport>& reports) {
    std::size_t budget = options.maxErrors == 0 ? std::numeric_limits<std::size_t>::max() : options.maxErrors;
    std::size_t notShown = 0;
    FileReport* firstNotShown = nullptr;
    for (FileReport& report : reports) {
        std::vector<Diagnostic> kept;
        for (Diagnostic& diagnostic : report.diagnostics) {
            if (diagnostic.severity == Severity::Warning) {
                if (!options.enabled[index(diagnostic.rule)]) continue;
                if (options.werror || (options.werrorMisreading && rule(diagnostic.rule).reading == Reading::Misread))
                    diagnostic.severity = Severity::Error;
            }
            if (diagnostic.severity == Severity::Error) {
                if (budget == 0) {
                    if (report.errorsNotShown++ == 0 || before(diagnostic.position, report.firstErrorNotShown))
                        report.firstErrorNotShown = diagnostic.position;
                    continue;
                }
                --budget;
            }
            kept.push_back(std::move(diagnostic));
        }
        report.diagnostics = std::move(kept);
        notShown += report.errorsNotShown;
        if (firstNotShown == nullptr && report.errorsNotShown > 0) firstNotShown = &report;
    }
    if (firstNotShown != nullptr)
        firstNotShown->diagnostics.push_back({Severity::Note, RuleId::MaxErrors, firstNotShown->firstErrorNotShown,
                                              std::to_string(notShown) + " more errors not shown (--max-errors=" +
                                                  std::to_string(options.maxErrors) + ")",
                                              {},
                                              {}});
}

}  // namespace

std::vector<FileReport> lintFiles(const Options& options, std::ostream& err, bool& unreadable) {
    std::vector<FileReport> reports;
    std::unordered_set<std::string> keywords;
    for (const std::string& file : options.files) {
        std::optional<FileReport> report =
            lintFile(file, options.maxErrors, options.aliases.empty() ? nullptr : &keywords, err);
        if (report) reports.push_back(std::move(*report));
        else unreadable = true;
    }
    if (!options.aliases.empty()) {
        FileReport report;
        report.name = options.aliases;
        if (readWhole(options.aliases, report.content, err)) {
            report.diagnostics = checkAliases(report.content, std::move(keywords));
            reports.push_back(std::move(report));
        } else {
            unreadable = true;
        }
    }
    applyOptions(options, reports);
    return reports;
}

int runLint(const Options& options, std::ostream& out, std::ostream& err, bool colour) {
    bool unreadable = false;
    const std::vector<FileReport> reports = lintFiles(options, err, unreadable);
    switch (options.format) {
    case Format::Text: writeText(err, reports, colour, options.quiet); break;
    case Format::Json: writeJson(out, reports); break;
    case Format::Sarif: writeSarif(out, reports); break;
    }
    using namespace companion;
    if (unreadable) return kExitFailure;
    for (const FileReport& report : reports) {
        if (report.errorsNotShown > 0) return kExitFindings;
        for (const Diagnostic& diagnostic : report.diagnostics)
            if (diagnostic.severity == Severity::Error) return kExitFindings;
    }
    return kExitClean;
}

}  // namespace quillet::lint
