#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

#include "lsp/analysis.h"
#include "lsp/text_position.h"

namespace quillet::lsp {

using nlohmann::json;

// JSON-RPC and protocol error codes.
constexpr int kParseError = -32700;
constexpr int kInvalidRequest = -32600;
constexpr int kMethodNotFound = -32601;
constexpr int kInvalidParams = -32602;
constexpr int kServerNotInitialized = -32002;
constexpr int kRequestCancelled = -32800;

// The document text, its lines and the client's way of counting characters:
// what turns byte spans into protocol ranges.
struct TextView {
    const DocumentText& text;
    const LineIndex& lines;
    Encoding encoding;

    json position(std::size_t offset) const;
    json range(Span span) const;
    std::size_t offset(const json& position) const;
};

json location(const std::string& uri, const TextView& view, Span span);

// Appends the JSON text of `value`. Texts of the document may hold bytes
// that are no UTF-8: they are replaced.
void appendJson(std::string& out, const json& value);

// A file URI's path, percent-decoded; empty for any other scheme.
std::string pathOfUri(std::string_view uri);
std::string uriOfPath(std::string_view path);

}  // namespace quillet::lsp
