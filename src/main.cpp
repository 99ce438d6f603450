#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "reader/driver.h"

int main(int argc, char** argv) {
    // The definition is read through std::cin only; unsynchronised it
    // buffers its own reads.
    std::ios::sync_with_stdio(false);
    quillet::RunContext context;
    if (const char* root = std::getenv("VELLUM_SRC")) context.vellumSrc = root;
    return quillet::runQuillet(std::vector<std::string>(argv + 1, argv + argc), std::cin, context);
}
