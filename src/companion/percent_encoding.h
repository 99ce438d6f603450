#pragma once

#include <string>
#include <string_view>

namespace quillet::companion {

// A path as a URI path: every byte but the unreserved characters (letters,
// digits, '-', '.', '_', '~') and '/' as %XX, so that a name holding '?',
// '#' or a blank is not taken for something else.
void appendPercentEncoded(std::string& out, std::string_view path);
std::string percentEncoded(std::string_view path);

}  // namespace quillet::companion
