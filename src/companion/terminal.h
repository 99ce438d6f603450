#pragma once

namespace quillet::companion {

// Whether what is written to `fd` may carry colour: only on a terminal, and
// never when NO_COLOR is set to a non-empty value (https://no-color.org).
bool colourOn(int fd);

// The same rule on facts given, as the tests give them.
bool colourOn(bool terminal, const char* noColor);

}  // namespace quillet::companion
