// A document's text kept in pieces reads, indexes and compares as its bytes.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>

#include "lsp/document_text.h"
#include "lsp/text_position.h"

namespace quillet::lsp {
namespace {

std::size_t byteMismatch(std::string_view a, std::string_view b) {
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.begin() + std::min(a.size(), b.size()), b.begin()).first -
                                    a.begin());
}

// Property: over random edits of texts of several pieces (lines longer than
// a piece, carriage returns, edits across pieces), the edited text holds the
// edited bytes in pieces that end at line feeds; its index, line starts and
// common ends are those of the bytes; and it shares with the text before it
// every piece the edit did not touch.
TEST(DocumentText, EditsKeepTheBytesAndShareTheRest) {
    std::mt19937 random(29);
    const std::string units[] = {"ab", "\n", "\r", "\r\n", "\xC3\xA9", " ", "    OPTION: name NAME INT\n"};
    const auto some = [&](std::size_t count) {
        std::string text;
        for (; count > 0; --count) text += units[random() % std::size(units)];
        return text;
    };
    for (int round = 0; round < 12; ++round) {
        std::string bytes = some(random() % 60000);
        if (round % 3 == 0) bytes.insert(random() % (bytes.size() + 1), std::string(70000 + random() % 70000, 'x'));
        DocumentText text(bytes);
        LineIndex lines(text);
        ASSERT_EQ(text.copy(), bytes);
        for (int step = 0; step < 25; ++step) {
            const std::size_t start = random() % (bytes.size() + 1);
            const std::size_t most = bytes.size() - start;
            const std::size_t removed = step % 5 == 0 ? random() % (most + 1) : std::min<std::size_t>(random() % 4, most);
            const std::string inserted = some(step % 7 == 0 ? 20000 : random() % 3);
            const DocumentText edited(text, start, removed, inserted);
            const LineIndex editedLines(lines, edited, start, removed, inserted.size());
            const std::string model = bytes.substr(0, start) + inserted + bytes.substr(start + removed);

            ASSERT_EQ(edited.size(), model.size());
            ASSERT_EQ(edited.copy(), model) << "round " << round << " step " << step;
            std::set<const char*> before;
            for (std::size_t i = 0; i < text.pieceCount(); ++i) before.insert(text.piece(i).text.data());
            std::size_t fresh = 0;
            for (std::size_t i = 0; i < edited.pieceCount(); ++i) {
                const DocumentText::Piece piece = edited.piece(i);
                ASSERT_FALSE(piece.text.empty());
                if (i + 1 < edited.pieceCount()) {
                    ASSERT_EQ(piece.text.back(), '\n');
                }
                if (before.count(piece.text.data()) == 0) fresh += piece.text.size();
            }
            ASSERT_LE(fresh, inserted.size() + text.pieceAt(start).text.size() + text.pieceAt(start + removed).text.size());
            ASSERT_EQ(editedLines, LineIndex(DocumentText::over(model)));

            const std::size_t prefix = text.commonPrefix(edited);
            ASSERT_EQ(prefix, byteMismatch(bytes, model));
            const std::string_view restBefore = std::string_view(bytes).substr(prefix);
            const std::string_view restNow = std::string_view(model).substr(prefix);
            const std::string reversedBefore(restBefore.rbegin(), restBefore.rend());
            const std::string reversedNow(restNow.rbegin(), restNow.rend());
            ASSERT_EQ(text.commonSuffix(edited, prefix), byteMismatch(reversedBefore, reversedNow));

            for (int probe = 0; probe < 20; ++probe) {
                const std::size_t at = random() % (model.size() + 1);
                const std::size_t feed = at == 0 ? std::string::npos : model.rfind('\n', at - 1);
                ASSERT_EQ(edited.lineStart(at), feed == std::string::npos ? 0 : feed + 1);
                const std::size_t end = std::min(model.find('\n', at), model.size());
                ASSERT_EQ(edited.restOfLine(at), std::string_view(model).substr(at, end - at));
                if (at < model.size()) {
                    ASSERT_EQ(edited[at], model[at]);
                }
            }
            text = edited;
            lines = editedLines;
            bytes = model;
        }
    }
}

}  // namespace
}  // namespace quillet::lsp
