#include "lsp/requests.h"

namespace quillet::lsp {

namespace {

json quickFix(std::string title, const Problem& problem, const std::string& uri, const TextView& view, json edits) {
    return {{"title", std::move(title)},
            {"kind", "quickfix"},
            {"diagnostics", json::array({diagnosticOf(problem, uri, view)})},
            {"isPreferred", true},
            {"edit", {{"changes", {{uri, std::move(edits)}}}}}};
}

json replacement(const TextView& view, Span span, std::string_view text) {
    return {{"range", view.range(span)}, {"newText", std::string(text)}};
}

// Turns each CR LF into a LF, and drops a carriage return that ends the
// file. (A protocol position cannot stand between the two.)
json lineEndEdits(const TextView& view) {
    json edits = json::array();
    // A piece ends at a line feed: a carriage return and the byte after it
    // are in one.
    for (std::size_t index = 0; index < view.text.pieceCount(); ++index) {
        const DocumentText::Piece piece = view.text.piece(index);
        const std::string_view text = piece.text;
        for (std::size_t at = 0; (at = text.find('\r', at)) != std::string_view::npos; ++at) {
            if (piece.offset + at + 1 == view.text.size()) edits.push_back(replacement(view, {piece.offset + at, 1}, ""));
            else if (at + 1 < text.size() && text[at + 1] == '\n')
                edits.push_back(replacement(view, {piece.offset + at, 2}, "\n"));
        }
    }
    return edits;
}

bool overlaps(Span a, Span b) { return a.offset <= b.offset + b.length && b.offset <= a.offset + a.length; }

}  // namespace

json codeActions(const Analysis& analysis, const std::string& uri, Span range, const TextView& view) {
    json actions = json::array();
    for (const Problem& problem : analysis.problems) {
        if (!overlaps(problem.span, range)) continue;
        if (problem.diagnostic.rule == lint::RuleId::CarriageReturn) {
            actions.push_back(quickFix("Convert Windows line ends to line feeds", problem, uri, view,
                                       lineEndEdits(view)));
            continue;
        }
        // Lint's did-you-means: a misspelt directive, type word, table name,
        // boolean or entry name, each replaced by what it was meant to be.
        for (std::size_t i = 0; i < problem.fixes.size(); ++i) {
            const std::string& meant = problem.diagnostic.fixes[i].replacement;
            actions.push_back(quickFix("Replace with " + meant, problem, uri, view,
                                       json::array({replacement(view, problem.fixes[i], meant)})));
        }
    }
    return actions;
}

}  // namespace quillet::lsp
