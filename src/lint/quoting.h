#pragma once

#include <string>
#include <string_view>

namespace quillet::lint {

// A word of the definition as messages show it: 'word'.
inline std::string quoted(std::string_view text) {
    std::string shown;
    shown.reserve(text.size() + 2);
    shown.push_back('\'');
    shown.append(text);
    shown.push_back('\'');
    return shown;
}

// A directive word as notes show it: `WORD:`.
inline std::string code(std::string_view text) {
    std::string shown;
    shown.reserve(text.size() + 2);
    shown.push_back('`');
    shown.append(text);
    shown.push_back('`');
    return shown;
}

}  // namespace quillet::lint
