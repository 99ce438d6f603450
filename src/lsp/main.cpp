#include <unistd.h>

#include <CLI/CLI.hpp>

#include <csignal>
#include <iostream>

#include "lsp/serve.h"

int main(int argc, char** argv) {
    using namespace quillet::lsp;
    CLI::App app("Language server for quillet definition files: speaks the Language Server Protocol on standard "
                 "input and output.",
                 "quillet-lsp");
    app.set_version_flag("--version", "quillet-lsp " QUILLET_VERSION);
    // Editors start servers with a transport switch; standard input and output is the only one.
    bool stdio = false;
    app.add_flag("--stdio", stdio, "Talk over standard input and output (the default)");
    app.footer("Exit status: 0 after the client's shutdown and exit, 1 when the client exits without shutdown or "
               "its connection is lost, 2 for a usage error.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return 0;
    } catch (const CLI::CallForVersion&) {
        std::cout << app.version() << "\n";
        return 0;
    } catch (const CLI::ParseError& error) {
        std::cerr << "quillet-lsp: error: " << error.what() << "\nRun with --help for more information.\n";
        return kUsageError;
    }
    // A client that goes away shows as a failed write, not a signal.
    std::signal(SIGPIPE, SIG_IGN);
    return serve(STDIN_FILENO, STDOUT_FILENO);
}
