#include <unistd.h>

#include <iostream>

#include "companion/terminal.h"
#include "diff/diff_command.h"

int main(int argc, char** argv) {
    // Nothing else writes to the standard streams; a report may have millions of lines.
    std::ios::sync_with_stdio(false);
    using quillet::companion::colourOn;
    const quillet::diff::Terminal terminal{colourOn(STDOUT_FILENO), colourOn(STDERR_FILENO)};
    return quillet::diff::runQuilletDiff(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr,
                                         terminal);
}
