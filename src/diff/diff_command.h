#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace quillet::diff {

// Where colour may be used: only on a terminal, and never with NO_COLOR.
struct Terminal {
    bool colourOut = false;
    bool colourErr = false;
};

// Exit statuses of the program.
constexpr int kNoFinding = 0;
constexpr int kFinding = 1;       // a change of a category --fail-on names
constexpr int kUnusable = 2;      // a usage error or a file that does not read

// One run of quillet-diff with these arguments (after the program name).
int runQuilletDiff(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                   Terminal terminal);

}  // namespace quillet::diff
