#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "quillet/driver.h"

int main(int argc, char** argv) {
    quillet::RunContext context;
    if (const char* root = std::getenv("VELLUM_SRC")) context.vellumSrc = root;
    quillet::LineReader definition(STDIN_FILENO);
    return quillet::runQuillet(std::vector<std::string>(argv + 1, argv + argc), definition, context);
}
