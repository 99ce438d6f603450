// Registers the generated commands with the example application and prints
// what arrived.
#include <iostream>

#include "nq_command.h"
#include "nq_command_id.h"

int otherValue();

int main() {
    NQ_Command::initialize();
    std::cout << NQ_Command::dump() << "other " << otherValue() << '\n';
    return 0;
}
