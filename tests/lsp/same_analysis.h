#pragma once

// What a keyword read again must give: everything a whole reading of the
// same text gives. Shared by the random-edit test and its fuzz target.
#include <string>

#include "lsp/analysis.h"

namespace quillet::lsp {

inline std::string placeText(Position position) {
    return std::to_string(position.line) + ":" + std::to_string(position.column);
}

inline std::string problemText(const Problem& p) {
    std::string s = placeText(p.diagnostic.position) + "@" + std::to_string(p.span.offset) + "+" +
                    std::to_string(p.span.length) + " " + std::to_string(static_cast<int>(p.diagnostic.severity)) +
                    "/" + std::to_string(static_cast<int>(p.diagnostic.rule)) + " " + p.diagnostic.message;
    for (std::size_t n = 0; n < p.notes.size(); ++n)
        s += " | " + placeText(p.diagnostic.notes[n].position) + "@" + std::to_string(p.notes[n].offset) + "+" +
             std::to_string(p.notes[n].length) + " " + p.diagnostic.notes[n].message;
    for (std::size_t f = 0; f < p.fixes.size(); ++f)
        s += " | fix " + placeText(p.diagnostic.fixes[f].position) + "@" + std::to_string(p.fixes[f].offset) + "+" +
             std::to_string(p.fixes[f].length) + " " + p.diagnostic.fixes[f].replacement;
    return s;
}

// The first difference between an analysis made by reading a keyword again
// and the whole reading of the same text, or nothing.
inline std::string differenceBetween(const Analysis& again, const Analysis& whole) {
    if (again.words.size() != whole.words.size()) return "word count";
    for (std::size_t i = 0; i < whole.words.size(); ++i) {
        const Word& a = again.words[i];
        const Word& b = whole.words[i];
        if (a.offset != b.offset || a.length != b.length || a.role != b.role || a.directive != b.directive)
            return "word " + std::to_string(i) + " at " + std::to_string(b.offset);
    }
    if (again.wordsEnd != whole.wordsEnd) return "line ends";
    if (again.keywordStarts != whole.keywordStarts) return "keyword starts";
    if (again.tables != whole.tables) return "tables";
    if (again.problems.size() != whole.problems.size()) return "problem count";
    for (std::size_t i = 0; i < whole.problems.size(); ++i)
        if (problemText(again.problems[i]) != problemText(whole.problems[i]))
            return problemText(again.problems[i]) + "\ninstead of\n" + problemText(whole.problems[i]);
    // Where each name was first given, for the next edit's reading.
    for (const Word& word : whole.words) {
        if (word.directive != 0) continue;
        const bool keywordName = word.role == WordRole::KeywordName;
        if (!keywordName && word.role != WordRole::KeywordId && word.role != WordRole::OptionId &&
            word.role != WordRole::TableName && word.role != WordRole::EntryId)
            continue;
        const auto placeIn = [&](const Analysis& analysis) {
            const TextRegistry& names = keywordName ? analysis.names->keywordNames : analysis.names->ids;
            const std::optional<Position> place = names.placeOf(whole.text(word));
            return place ? placeText(*place) : "none";
        };
        if (placeIn(again) != placeIn(whole)) return "place of " + whole.text(word);
    }
    if (again.keywords.size() != whole.keywords.size()) return "keyword count";
    for (const auto& [name, reading] : whole.keywords)
        if (!again.keywords.contains(name)) return "keyword " + std::string(name);
    // A hover's records, read again where the keyword now stands.
    for (std::size_t i = 0; i < whole.words.size(); ++i) {
        if (whole.words[i].role != WordRole::KeywordName || whole.words[i].directive != 0) continue;
        const KeywordReading a = again.recordsAt(again.words[i]);
        const KeywordReading b = whole.recordsAt(whole.words[i]);
        if ((a.keyword == nullptr) != (b.keyword == nullptr)) return "keyword record at word " + std::to_string(i);
        if (a.keyword != nullptr &&
            (a.keyword->id.view() != b.keyword->id.view() || a.keyword->summary.view() != b.keyword->summary.view() ||
             a.keyword->options.size() != b.keyword->options.size()))
            return "keyword record " + whole.text(whole.words[i]);
    }
    return {};
}

}  // namespace quillet::lsp
