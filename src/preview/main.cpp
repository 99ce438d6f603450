#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>

#include <unistd.h>

#include "companion/exit_code.h"
#include "companion/terminal.h"
#include "preview/diagnostic.h"
#include "preview/preview.h"

namespace {

using quillet::companion::kExitFailure;

int fail(const quillet::preview::PreviewError& error) {
    std::cerr << quillet::preview::formatDiagnostic(error, quillet::companion::colourOn(STDERR_FILENO));
    return kExitFailure;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Writes a static site, for any browser and without a server, of the command reference that "
                 "quillet -html wrote into REFERENCE_DIR.",
                 "quillet-preview");
    std::string reference;
    std::string site;
    app.add_option("REFERENCE_DIR", reference, "Directory holding Commands.fltoc and the topics")->required();
    app.add_option("SITE_DIR", site, "Directory of the site, replaced as a whole on success")->required();
    app.set_version_flag("--version", "quillet-preview " QUILLET_VERSION);
    app.footer("Exit status: 0 when the site was written; 2 on a usage error, or when the reference cannot be "
               "read or the site cannot be written (SITE_DIR is then left as it was).");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& request) {
        return app.exit(request);
    } catch (const CLI::CallForVersion& request) {
        return app.exit(request);
    } catch (const CLI::ParseError& error) {
        fail(quillet::preview::PreviewError("quillet-preview", error.what()));
        std::cerr << "usage: quillet-preview [--help] [--version] REFERENCE_DIR SITE_DIR\n";
        return kExitFailure;
    }

    try {
        quillet::preview::buildPreview(reference, site);
    } catch (const quillet::preview::PreviewError& error) {
        return fail(error);
    } catch (const std::exception& error) {
        return fail(quillet::preview::PreviewError("quillet-preview", error.what()));
    }
    return quillet::companion::kExitClean;
}
