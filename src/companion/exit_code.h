#pragma once

namespace quillet::companion {

// The exit statuses of every companion, as their man pages document them.
// Unscoped, so that main() returns them as they are.
enum ExitCode : int {
    kExitClean = 0,     // nothing to report: lint found no error, diff no change --fail-on names, preview wrote the site
    kExitFindings = 1,  // lint's problems, diff's changes
    kExitFailure = 2,   // a usage error, or an input that cannot be read or an output that cannot be written
};

}  // namespace quillet::companion
