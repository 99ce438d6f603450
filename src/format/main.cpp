#include <unistd.h>

#include <iostream>

#include "format/format_command.h"
#include "companion/terminal.h"

int main(int argc, char** argv) {
    // Nothing else writes to the standard streams; a formatted file may be large.
    std::ios::sync_with_stdio(false);
    return quillet::format::runQuilletFormat(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr,
                                             quillet::companion::colourOn(STDERR_FILENO));
}
