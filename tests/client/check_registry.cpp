// Runs the generated NQ_Command::initialize() against the example application
// and compares what was registered with the expected record (argument 1).
#include <fstream>
#include <iostream>
#include <sstream>

#include "nq_command.h"
#include "nq_command_id.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " expected-record\n";
        return 2;
    }
    NQ_Command::initialize();
    const std::string actual = "null keyword " + std::to_string(NQ_NULL_KEYWORD.number()) + ", null option " +
                               std::to_string(NQ_NULL_OPTION.number()) + '\n' + NQ_Command::dump();

    std::ifstream file(argv[1], std::ios::binary);
    std::stringstream expected;
    expected << file.rdbuf();
    if (file && actual == expected.str()) return 0;
    std::cerr << "registered:\n" << actual << "expected (" << argv[1] << "):\n" << expected.str();
    return 1;
}
