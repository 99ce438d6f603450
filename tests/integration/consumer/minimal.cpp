// Registers the generated commands with the minimal headers of the
// documentation and prints the keywords that arrived.
#include <iostream>

#include "nq_command.h"

int main() {
    NQ_Command::initialize();
    for (const auto& keyword : NQ_Command::keywords()) std::cout << keyword->name << ' ' << keyword->id << '\n';
    return 0;
}
