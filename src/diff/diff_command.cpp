#include "diff/diff_command.h"

#include <CLI/CLI.hpp>
#include <thread>

#include "companion/diagnostic_printer.h"
#include "companion/exit_code.h"
#include "diff/comparer.h"
#include "diff/definition_loader.h"
#include "diff/report.h"

namespace quillet::diff {

namespace {

struct Settings {
    std::string format = "text";
    std::string failOn = "breaking";
    std::string aliasesOld;
    std::string aliasesNew;
    CLI::Option* aliasesGiven = nullptr;
    std::string oldPath;
    std::string newPath;
};

void describeCommandLine(CLI::App& app, Settings& settings) {
    app.add_option("--format", settings.format, "Report as text (the default), json or markdown")
        ->check(CLI::IsMember({"text", "json", "markdown"}));
    CLI::Option* aliasesOld =
        app.add_option("--aliases-old", settings.aliasesOld, "Aliases file that goes with OLD");
    CLI::Option* aliasesNew =
        app.add_option("--aliases-new", settings.aliasesNew, "Aliases file that goes with NEW");
    aliasesOld->needs(aliasesNew);
    aliasesNew->needs(aliasesOld);
    settings.aliasesGiven = aliasesOld;
    app.add_option("--fail-on", settings.failOn,
                   "Exit with status 1 on breaking changes (the default), on breaking or behaviour changes, or none")
        ->check(CLI::IsMember({"breaking", "behaviour", "none"}));
    app.add_option("OLD", settings.oldPath, "The definition scripts were written for")->required();
    app.add_option("NEW", settings.newPath, "The definition to check against it")->required();
    app.set_version_flag("--version", "quillet-diff " QUILLET_VERSION);
    app.footer("Exit status: 0 no change that --fail-on names, 1 such a change, 2 usage or read error.");
}

void printDiagnostic(std::ostream& err, const Diagnostic& diagnostic, bool colour) {
    companion::printDiagnostic(err, {diagnostic.file, diagnostic.line, diagnostic.column}, companion::Severity::Error,
                               diagnostic.message, "", colour);
}

// Reads OLD on a second thread while NEW is read on this one, then each
// aliases file after its definition.
bool load(const Settings& settings, DefinitionSet& oldSet, DefinitionSet& newSet, std::ostream& err, bool colour) {
    std::optional<Diagnostic> oldError;
    std::thread oldReader([&] { oldError = loadDefinition(settings.oldPath, oldSet); });
    std::optional<Diagnostic> newError = loadDefinition(settings.newPath, newSet);
    oldReader.join();
    if (settings.aliasesGiven->count() > 0) {
        if (!oldError) oldError = loadAliases(settings.aliasesOld, oldSet);
        if (!newError) newError = loadAliases(settings.aliasesNew, newSet);
    }
    if (oldError) printDiagnostic(err, *oldError, colour);
    if (newError) printDiagnostic(err, *newError, colour);
    return !oldError && !newError;
}

int exitStatus(const ChangeList& changes, const std::string& failOn) {
    const CategoryCounts counts = countCategories(changes);
    using namespace companion;
    if (failOn == "none") return kExitClean;
    if (counts.breaking > 0) return kExitFindings;
    return failOn == "behaviour" && counts.behaviour > 0 ? kExitFindings : kExitClean;
}

}  // namespace

int runQuilletDiff(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                   Terminal terminal) {
    CLI::App app("Compares two quillet definition files and reports what changed for scripts written for OLD.",
                 "quillet-diff");
    Settings settings;
    describeCommandLine(app, settings);
    try {
        // CLI11 takes the arguments last first.
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error, out, err);
        err << "quillet-diff: error: " << error.what() << "\nRun with --help for more information.\n";
        return companion::kExitFailure;
    }

    DefinitionSet oldSet;
    DefinitionSet newSet;
    if (!load(settings, oldSet, newSet, err, terminal.colourErr)) return companion::kExitFailure;
    TextArena values;
    const ChangeList changes = compareDefinitions(oldSet, newSet, values);
    if (settings.format == "json") writeJsonReport(out, changes);
    else if (settings.format == "markdown") writeMarkdownReport(out, changes);
    else writeTextReport(out, changes, settings.oldPath, settings.newPath, terminal.colourOut);
    out.flush();
    return exitStatus(changes, settings.failOn);
}

}  // namespace quillet::diff
