#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace quillet::lsp {

// Parses one message's JSON as nlohmann::json::parse does (the last of two
// equal keys wins), but moves each string out of the parser instead of
// copying it, and gives the body's pages back to the system as the parser
// goes past them: a document's text in a message is then held about once,
// not three times. False, with `message` unspecified, where the body is no
// JSON.
bool parseMessage(std::string body, nlohmann::json& message);

}  // namespace quillet::lsp
