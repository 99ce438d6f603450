#include <algorithm>
#include <array>
#include <string_view>

#include "lsp/requests.h"

#include <charconv>

namespace quillet::lsp {

namespace {

enum TokenType : std::uint32_t {
    kDirective,
    kKeywordName,
    kOptionName,
    kTableName,
    kId,
    kType,
    kValue,
    kEntryName,
    kComment,
};

// Standard token types, so that any theme colours them.
constexpr std::array<std::string_view, 9> kTokenTypes = {
    "keyword", "function", "property", "enum", "macro", "type", "number", "enumMember", "comment",
};

bool tokenType(const Word& word, std::uint32_t& type) {
    if (word.directive != 0) {
        type = kDirective;
        return true;
    }
    switch (word.role) {
    case WordRole::KeywordName: type = kKeywordName; return true;
    case WordRole::OptionName: type = kOptionName; return true;
    case WordRole::TableName:
    case WordRole::TableReference: type = kTableName; return true;
    case WordRole::KeywordId:
    case WordRole::OptionId:
    case WordRole::EntryId: type = kId; return true;
    case WordRole::OptionType: type = kType; return true;
    case WordRole::OptionDefault:
    case WordRole::Limit:
    case WordRole::ModelNameCount:
    case WordRole::EntryValue: type = kValue; return true;
    case WordRole::EntryName: type = kEntryName; return true;
    default: return false;
    }
}

// Tokens in document order, encoded relative to the one before.
// Writes the tokens' numbers straight into the answer: a large document
// has tens of millions of them.
class TokenWriter {
public:
    TokenWriter(const TextView& view, std::string& out) : view_(view), out_(out) { out_ += R"({"data":[)"; }

    void add(std::size_t offset, std::size_t length, std::uint32_t type) {
        const TextPosition start = view_.lines.position(view_.text, offset, view_.encoding);
        const TextPosition end = view_.lines.position(view_.text, offset + length, view_.encoding);
        // A token ends with its line (a lone carriage return in a word).
        const std::uint32_t units =
            end.line == start.line ? end.character - start.character
                                   : view_.lines.position(view_.text, view_.lines.lineEnd(view_.text, start.line),
                                                          view_.encoding).character - start.character;
        if (units == 0) return;
        for (const std::uint32_t number : {start.line - line_, start.line == line_ ? start.character - character_
                                                                                    : start.character,
                                           units, type, std::uint32_t{0}}) {
            if (written_) out_ += ',';
            written_ = true;
            char digits[16];
            out_.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
        }
        line_ = start.line;
        character_ = start.character;
    }

    void finish() { out_ += "]}"; }

private:
    const TextView& view_;
    std::string& out_;
    bool written_ = false;
    std::uint32_t line_ = 0;
    std::uint32_t character_ = 0;
};

}  // namespace

json semanticTokenLegend() {
    json types = json::array();
    for (std::string_view type : kTokenTypes) types.push_back(std::string(type));
    return {{"tokenTypes", std::move(types)}, {"tokenModifiers", json::array()}};
}

void writeSemanticTokens(const Analysis& analysis, const TextView& view, std::string& out) {
    // Room for the most a token takes, five numbers of ten digits, so that
    // a large answer is not copied as it grows; pages not written to cost
    // nothing.
    out.reserve(out.size() + (analysis.words.size() + analysis.wordsEnd.size()) * 55 + 16);
    TokenWriter tokens(view, out);
    const DocumentText& text = view.text;
    auto word = analysis.words.begin();
    std::size_t lineStart = 0;
    // Line by line as the reader read them: the words, then a comment after them.
    for (std::size_t line = 0; line < analysis.wordsEnd.size() && lineStart <= text.size(); ++line) {
        const std::string_view lineText = text.restOfLine(lineStart);
        const std::size_t newline = lineStart + lineText.size();
        for (std::uint32_t type = 0; word != analysis.words.end() && word->offset < newline; ++word)
            if (tokenType(*word, type)) tokens.add(word->offset, word->length, type);
        const std::size_t from = std::min<std::size_t>(analysis.wordsEnd[line], lineText.size());
        const std::size_t found = lineText.find('#', from);
        if (found != std::string_view::npos) {
            std::size_t end = lineText.size();
            if (end > found && lineText[end - 1] == '\r') --end;
            tokens.add(lineStart + found, end - found, kComment);
        }
        lineStart = newline + 1;
    }
    tokens.finish();
}

}  // namespace quillet::lsp
