#pragma once

#include <nlohmann/json.hpp>

#include <string_view>

namespace quillet::lsp {

// Parses one message's JSON as nlohmann::json::parse does (the last of two
// equal keys wins), but moves each string out of the parser instead of
// copying it: a document's text in a message is then held once, not twice.
// False, with `message` unspecified, where the body is no JSON.
bool parseMessage(std::string_view body, nlohmann::json& message);

}  // namespace quillet::lsp
