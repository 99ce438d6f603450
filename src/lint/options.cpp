#include "lint/options.h"

#include <CLI/CLI.hpp>

#include "companion/exit_code.h"

#include <algorithm>
#include <ostream>
#include <string_view>

namespace quillet::lint {

namespace {

std::string warningList() {
    std::string list = "Warnings (each on by default; -Wno-NAME turns one off, -WNAME back on; * marks those that "
                       "--werror-misreading makes errors):\n";
    for (const Rule& rule : kRules)
        if (rule.kind == RuleKind::Warning)
            list += "  " + std::string(rule.name) + (rule.reading == Reading::Misread ? " *" : "") + "\n";
    list += "\nExit status: 0 when nothing is reported (or only warnings without --werror), 1 when problems are "
            "reported, 2 for a usage error or an unreadable file.";
    return list;
}

// CLI11 knows no -Wname flags: they are taken out of the arguments first.
bool takeWarningFlags(std::vector<std::string>& arguments, Options& options, std::ostream& err) {
    std::vector<std::string> rest;
    for (std::string& argument : arguments) {
        if (!argument.starts_with("-W")) {
            rest.push_back(std::move(argument));
            continue;
        }
        std::string_view name = std::string_view(argument).substr(2);
        const bool on = !name.starts_with("no-");
        if (!on) name.remove_prefix(3);
        const std::optional<RuleId> rule = ruleNamed(name);
        if (!rule || lint::rule(*rule).kind != RuleKind::Warning) {
            err << "quillet-lint: error: unknown warning '" << name << "' in " << argument
                << "\nRun with --help for the list of warnings.\n";
            return false;
        }
        options.enabled[index(*rule)] = on;
    }
    arguments = std::move(rest);
    return true;
}

}  // namespace

int parseOptions(int argc, const char* const* argv, Options& options, std::ostream& out, std::ostream& err) {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    if (!takeWarningFlags(arguments, options, err)) return companion::kExitFailure;

    CLI::App app("Checks quillet definition files and reports every problem at once.", "quillet-lint");
    app.set_version_flag("--version", "quillet-lint " QUILLET_VERSION);
    app.footer(warningList());
    std::string format = "text";
    app.add_option("--format", format, "Output: text (on standard error), json or sarif (on standard output)")
        ->check(CLI::IsMember({"text", "json", "sarif"}));
    app.add_flag("--werror", options.werror, "Report warnings as errors");
    app.add_flag("--werror-misreading", options.werrorMisreading,
                 "Report as errors the warnings that mean quillet reads the file otherwise than it looks");
    app.add_flag("--quiet", options.quiet, "Text format: print nothing when nothing is reported");
    app.add_option("--max-errors", options.maxErrors, "Show at most N errors (default 50; 0: all)")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--aliases", options.aliases, "Also check this aliases file against the definitions");
    app.add_option("FILE", options.files, "Definition files; - for standard input")->required();

    std::reverse(arguments.begin(), arguments.end());  // CLI11 takes them from the back
    try {
        app.parse(arguments);
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return companion::kExitClean;
    } catch (const CLI::CallForVersion&) {
        out << app.version() << "\n";
        return companion::kExitClean;
    } catch (const CLI::ParseError& error) {
        err << "quillet-lint: error: " << error.what() << "\nRun with --help for more information.\n";
        return companion::kExitFailure;
    }
    options.format = format == "json" ? Format::Json : format == "sarif" ? Format::Sarif : Format::Text;
    return -1;
}

}  // namespace quillet::lint
