#pragma once

#include <string>
#include <string_view>

namespace quillet::preview {

// The escapes of the site's pages and index. Bytes are copied as they are
// otherwise: the pages declare UTF-8, as the topics do.

// Text content: & < >.
void appendText(std::string& out, std::string_view text);

// A double-quoted attribute value: & < > ".
void appendAttribute(std::string& out, std::string_view value);


// A double-quoted JavaScript string literal.
void appendJsString(std::string& out, std::string_view text);

}  // namespace quillet::preview
