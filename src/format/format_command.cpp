#include "format/format_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstring>

#include "companion/diagnostic_printer.h"
#include "companion/exit_code.h"
#include "format/file_text.h"
#include "format/formatter.h"
#include "format/unified_diff.h"

namespace quillet::format {

using namespace companion;

namespace {

struct Settings {
    bool check = false;
    bool diff = false;
    bool inPlace = false;
    std::vector<std::string> files;
};

void describeCommandLine(CLI::App& app, Settings& settings) {
    CLI::Option* check =
        app.add_flag("--check", settings.check, "Write nothing; list the files that would change, exit 1 if any");
    CLI::Option* diff = app.add_flag("--diff", settings.diff, "Print the changes as a unified diff");
    app.add_flag("-i,--in-place", settings.inPlace, "Rewrite the files that would change")
        ->excludes(check)
        ->excludes(diff);
    app.add_option("FILE", settings.files, "Definition files; - for standard input")->required();
    app.set_version_flag("--version", "quillet-format " QUILLET_VERSION);
    app.footer("Exit status: 0 formatted (with --check: nothing would change), 1 a definition quillet refuses or "
               "(with --check) a file that would change, 2 usage error or a file that cannot be read or written.");
}

void printFailure(std::ostream& err, const char* what, const std::string& path, int reason) {
    err << "quillet-format: error: cannot " << what << " '" << path << "': " << std::strerror(reason) << '\n';
}

// Formats one file as the settings say; its exit status.
int formatFile(const Settings& settings, const std::string& path, std::ostream& out, std::ostream& err,
               bool colour) {
    const std::string name = path == "-" ? "<stdin>" : path;
    FileText file;
    int reason = 0;
    if (!file.open(path, reason)) {
        printFailure(err, "read", name, reason);
        return kExitFailure;
    }
    const std::string_view text = file.view();
    std::string formatted;
    std::vector<Problem> problems;
    std::vector<int> origins;
    if (!formatDefinition(text, formatted, problems, settings.diff ? &origins : nullptr)) {
        for (const Problem& problem : problems)
            companion::printDiagnostic(err, {name, problem.line, problem.column}, companion::Severity::Error,
                                       problem.message, "", colour);
        return kExitFindings;
    }
    const bool changes = formatted != text;
    if (settings.diff) writeUnifiedDiff(out, name, text, formatted, origins);
    else if (settings.check && changes) out << name << '\n';
    if (settings.check) return changes ? kExitFindings : kExitClean;
    if (settings.inPlace) {
        if (changes && !replaceFileText(path, formatted, reason)) {
            printFailure(err, "write", path, reason);
            return kExitFailure;
        }
    } else if (!settings.diff) {
        out << formatted;
    }
    return kExitClean;
}

}  // namespace

int runQuilletFormat(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, bool colour) {
    CLI::App app("Lays out quillet definition files in the one layout of the definition language guide.",
                 "quillet-format");
    Settings settings;
    describeCommandLine(app, settings);
    try {
        // CLI11 takes the arguments last first.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        const auto standardInputs = std::count(settings.files.begin(), settings.files.end(), "-");
        if (settings.inPlace && standardInputs > 0)
            throw CLI::ValidationError("-i", "standard input cannot be rewritten in place");
        if (standardInputs > 1)
            throw CLI::ValidationError("FILE", "standard input can be read once only");
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error, out, err);
        err << "quillet-format: error: " << error.what() << "\nRun with --help for more information.\n";
        return kExitFailure;
    }

    int status = kExitClean;
    for (const std::string& path : settings.files)
        status = std::max(status, formatFile(settings, path, out, err, colour));
    out.flush();
    if (!out) {
        err << "quillet-format: error: cannot write the standard output\n";
        return kExitFailure;
    }
    return status;
}

}  // namespace quillet::format
