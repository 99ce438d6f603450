#include <unistd.h>

#include <iostream>

#include "companion/terminal.h"
#include "lint/lint_run.h"
#include "lint/options.h"

int main(int argc, char** argv) {
    using namespace quillet::lint;
    Options options;
    if (const int status = parseOptions(argc, argv, options, std::cout, std::cerr); status >= 0) return status;
    return runLint(options, std::cout, std::cerr, quillet::companion::colourOn(STDERR_FILENO));
}
