#include "companion/percent_encoding.h"

namespace quillet::companion {

namespace {

bool unreserved(unsigned char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
           c == '_' || c == '~' || c == '/';
}

}  // namespace

void appendPercentEncoded(std::string& out, std::string_view path) {
    constexpr char kHexDigits[] = "0123456789ABCDEF";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (unreserved(byte)) {
            out += c;
        } else {
            out += '%';
            out += kHexDigits[byte >> 4];
            out += kHexDigits[byte & 15];
        }
    }
}

std::string percentEncoded(std::string_view path) {
    std::string encoded;
    appendPercentEncoded(encoded, path);
    return encoded;
}

}  // namespace quillet::companion
