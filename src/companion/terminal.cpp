#include "companion/terminal.h"

#include <unistd.h>

#include <cstdlib>

namespace quillet::companion {

bool colourOn(int fd) { return colourOn(::isatty(fd) != 0, std::getenv("NO_COLOR")); }

bool colourOn(bool terminal, const char* noColor) { return terminal && (noColor == nullptr || *noColor == '\0'); }

}  // namespace quillet::companion
