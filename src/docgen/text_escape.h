#pragma once

#include <string>
#include <string_view>

namespace quillet {

// The copy of `text` with every occurrence of `from` replaced by `to`, found
// left to right without overlap; inserted text is never searched again. An
// empty `from` leaves the text unchanged.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

// The one mark-up escaping of the topics: &, > and < become entities, a
// doubled backslash a line break, doubled apostrophes or backquotes a double
// quote. The order matters: the entities must not be escaped twice and the
// line break must survive as mark-up.
std::string escapeText(std::string_view text);

}  // namespace quillet
