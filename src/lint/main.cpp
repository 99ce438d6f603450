#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "lint/lint_run.h"
#include "lint/options.h"

int main(int argc, char** argv) {
    using namespace quillet::lint;
    Options options;
    if (const int status = parseOptions(argc, argv, options, std::cout, std::cerr); status >= 0) return status;
    const bool colour = ::isatty(STDERR_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr;
    return runLint(options, std::cout, std::cerr, colour);
}
