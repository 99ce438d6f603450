#pragma once

#include <string>

#include "lsp/analysis.h"
#include "lsp/protocol.h"

namespace quillet::lsp {

// The answers to the document requests, each from one complete analysis.
// `view` is the analysed text as the client counts its characters.

// The protocol diagnostics of lint's findings in the document at `uri`.
json diagnosticsOf(const std::vector<Problem>& problems, const std::string& uri, const TextView& view);
json diagnosticOf(const Problem& problem, const std::string& uri, const TextView& view);

json hover(const Analysis& analysis, std::size_t offset, const TextView& view);
json definition(const Analysis& analysis, const std::string& uri, std::size_t offset, const TextView& view);
json references(const Analysis& analysis, const std::string& uri, std::size_t offset, bool withDeclaration,
                const TextView& view);
json completion(const Analysis& analysis, std::size_t offset);
json codeActions(const Analysis& analysis, const std::string& uri, Span range, const TextView& view);

// The token types, in the order the tokens' numbers refer to.
json semanticTokenLegend();

// The two answers that cover the whole document are written straight into
// the message's text, appended to `out`: as a tree of JSON values a large
// document's would take gigabytes.
void writeDocumentSymbols(const Analysis& analysis, const TextView& view, std::string& out);
void writeSemanticTokens(const Analysis& analysis, const TextView& view, std::string& out);

}  // namespace quillet::lsp
