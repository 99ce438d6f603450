#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "lint/rules.h"

namespace quillet::lint {

enum class Format { Text, Json, Sarif };

struct Options {
    Format format = Format::Text;
    bool werror = false;
    bool werrorMisreading = false;  // only the warnings of Reading::Misread
    bool quiet = false;             // text: no summary line when nothing is reported
    std::size_t maxErrors = 50;  // 0: no limit
    std::string aliases;         // empty: none
    std::vector<bool> enabled = std::vector<bool>(kRules.size(), true);  // by rule
    std::vector<std::string> files;                                      // "-" is standard input
};

// Reads the command line into `options`. Returns -1 to go on, or the exit
// status once --help or --version was answered or a usage error reported.
int parseOptions(int argc, const char* const* argv, Options& options, std::ostream& out, std::ostream& err);

}  // namespace quillet::lint
