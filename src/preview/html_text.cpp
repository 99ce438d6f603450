#include "preview/html_text.h"

namespace quillet::preview {

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

void appendEscaped(std::string& out, std::string_view text, bool quote) {
    for (char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"':
                if (quote) out += "&quot;";
                else out += c;
                break;
            default: out += c;
        }
    }
}

}  // namespace

void appendText(std::string& out, std::string_view text) { appendEscaped(out, text, false); }

void appendAttribute(std::string& out, std::string_view value) { appendEscaped(out, value, true); }

void appendJsString(std::string& out, std::string_view text) {
    out += '"';
    for (char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (byte < 0x20) {
            out += "\\x";
            out += kHexDigits[byte >> 4];
            out += kHexDigits[byte & 15];
        } else {
            out += c;
        }
    }
    out += '"';
}

}  // namespace quillet::preview
