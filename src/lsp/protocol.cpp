#include "lsp/protocol.h"

#include "companion/percent_encoding.h"

namespace quillet::lsp {

json TextView::position(std::size_t offset) const {
    const TextPosition at = lines.position(text, offset, encoding);
    return {{"line", at.line}, {"character", at.character}};
}

json TextView::range(Span span) const {
    return {{"start", position(span.offset)}, {"end", position(span.offset + span.length)}};
}

std::size_t TextView::offset(const json& position) const {
    const auto line = position.at("line").get<std::uint32_t>();
    const auto character = position.at("character").get<std::uint32_t>();
    return lines.offset(text, {line, character}, encoding);
}

json location(const std::string& uri, const TextView& view, Span span) {
    return {{"uri", uri}, {"range", view.range(span)}};
}

void appendJson(std::string& out, const json& value) {
    out += value.dump(-1, ' ', false, json::error_handler_t::replace);
}

namespace {

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

std::string pathOfUri(std::string_view uri) {
    constexpr std::string_view scheme = "file://";
    if (!uri.starts_with(scheme)) return {};
    uri.remove_prefix(scheme.size());
    // A host part (file://host/path) is dropped: the path is local.
    uri.remove_prefix(std::min(uri.find('/'), uri.size()));
    std::string path;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        if (uri[i] == '%' && i + 2 < uri.size() && hexValue(uri[i + 1]) >= 0 && hexValue(uri[i + 2]) >= 0) {
            path.push_back(static_cast<char>(hexValue(uri[i + 1]) * 16 + hexValue(uri[i + 2])));
            i += 2;
        } else {
            path.push_back(uri[i]);
        }
    }
    return path;
}

std::string uriOfPath(std::string_view path) { return "file://" + companion::percentEncoded(path); }

}  // namespace quillet::lsp
