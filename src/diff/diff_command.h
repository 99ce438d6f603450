#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace quillet::diff {

// Where colour may be used (companion/terminal.h says when).
struct Terminal {
    bool colourOut = false;
    bool colourErr = false;
};

// One run of quillet-diff with these arguments (after the program name).
// The exit status is a companion one: findings are changes of a category
// that --fail-on names; a failure is a usage error or a file that does not read.
int runQuilletDiff(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err,
                   Terminal terminal);

}  // namespace quillet::diff
