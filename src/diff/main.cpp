#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "diff/diff_command.h"

int main(int argc, char** argv) {
    // Nothing else writes to the standard streams; a report may have millions of lines.
    std::ios::sync_with_stdio(false);
    const bool colour = std::getenv("NO_COLOR") == nullptr;
    const quillet::diff::Terminal terminal{colour && isatty(STDOUT_FILENO) != 0, colour && isatty(STDERR_FILENO) != 0};
    return quillet::diff::runQuilletDiff(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr,
                                         terminal);
}
