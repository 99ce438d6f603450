#include "lint/lint_run.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ostream>
#include <limits>
#include <optional>
#include <unordered_set>

#include "lint/alias_check.h"
#include "lint/definition_linter.h"
#include "lint/json_output.h"
#include "lint/text_output.h"

namespace quillet::lint {

namespace {

class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : fd_(fd) {}
    ~FileDescriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int get() const { return fd_; }

private:
    int fd_;
};

void cannotRead(std::ostream& err, const std::string& path, int error) {
    err << "quillet-lint: error: cannot read '" << path << "': " << std::strerror(error) << "\n";
}

// A file opened for reading, or -1 after reporting why not.
int openInput(const std::string& path, bool& regular, std::ostream& err) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (fd < 0 || ::fstat(fd, &status) != 0) {
        cannotRead(err, path, errno);
        if (fd >= 0) ::close(fd);
        return -1;
    }
    if (S_ISDIR(status.st_mode)) {
        cannotRead(err, path, EISDIR);
        ::close(fd);
        return -1;
    }
    regular = S_ISREG(status.st_mode);
    return fd;
}

std::optional<std::string> readWhole(int fd, const std::string& path, std::ostream& err) {
    std::string content;
    char block[1 << 16];
    for (ssize_t count; (count = ::read(fd, block, sizeof block)) != 0;) {
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            cannotRead(err, path, errno);
            return std::nullopt;
        }
        content.append(block, static_cast<std::size_t>(count));
    }
    return content;
}

std::optional<std::string> readWhole(const std::string& path, std::ostream& err) {
    bool regular = false;
    const FileDescriptor fd(openInput(path, regular, err));
    if (fd.get() < 0) return std::nullopt;
    return readWhole(fd.get(), path, err);
}

// Lints one definition. A regular file is read as a stream and read again
// for the lines shown; standard input and pipes are kept.
std::optional<FileReport> lintFile(const std::string& file, std::size_t maxErrors,
                                   std::unordered_set<std::string>* keywords, std::ostream& err) {
    FileReport report;
    report.name = file == "-" ? "<stdin>" : file;
    bool regular = false;
    const FileDescriptor fd(file == "-" ? ::dup(STDIN_FILENO) : openInput(file, regular, err));
    if (fd.get() < 0) return std::nullopt;
    DefinitionLinter linter(maxErrors == 0 ? std::numeric_limits<std::size_t>::max() : maxErrors);
    if (regular) {
        report.path = file;
        LineReader lines(fd.get());
        linter.read(lines);
    } else {
        std::optional<std::string> content = readWhole(fd.get(), report.name, err);
        if (!content) return std::nullopt;
        report.content = std::move(*content);
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

// Drops warnings that are off, raises the rest under --werror, and keeps the
// first --max-errors errors of the run.
void applyOptions(const Options& options, std::vector<FileReport>& reports) {
    std::size_t budget = options.maxErrors == 0 ? std::numeric_limits<std::size_t>::max() : options.maxErrors;
    for (FileReport& report : reports) {
        std::vector<Diagnostic> kept;
        for (Diagnostic& diagnostic : report.diagnostics) {
            if (diagnostic.severity == Severity::Warning) {
                if (!options.enabled[diagnostic.rule]) continue;
                if (options.werror) diagnostic.severity = Severity::Error;
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
        if (report.errorsNotShown > 0)
            kept.push_back({Severity::Note, findRule("max-errors"), report.firstErrorNotShown,
                            std::to_string(report.errorsNotShown) + " more errors not shown (--max-errors=" +
                                std::to_string(options.maxErrors) + ")",
                            {}});
        report.diagnostics = std::move(kept);
    }
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
        if (std::optional<std::string> content = readWhole(options.aliases, err)) {
            FileReport report;
            report.name = options.aliases;
            report.content = std::move(*content);
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
    case Format::Text: writeText(err, reports, colour); break;
    case Format::Json: writeJson(out, reports); break;
    case Format::Sarif: writeSarif(out, reports); break;
    }
    if (unreadable) return kUsageError;
    for (const FileReport& report : reports) {
        if (report.errorsNotShown > 0) return kProblems;
        for (const Diagnostic& diagnostic : report.diagnostics)
            if (diagnostic.severity == Severity::Error) return kProblems;
    }
    return kClean;
}

}  // namespace quillet::lint
