#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "diff/diff_command.h"

int main(int argc, char** argv) {
    const bool colour = std::getenv("NO_COLOR") == nullptr;
    const quillet::diff::Terminal terminal{colour && isatty(STDOUT_FILENO) != 0, colour && isatty(STDERR_FILENO) != 0};
    return quillet::diff::runQuilletDiff(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr,
                                         terminal);
}
