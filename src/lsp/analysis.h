#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "lint/alias_check.h"
#include "lint/definition_linter.h"
#include "lsp/snapshot.h"
#include "model/large_block.h"
#include "reader/read_observer.h"

namespace quillet::lsp {

// A word of the definition that the requests need (descriptions are left
// out), where it stands in the document.
struct Word {
    std::uint32_t offset;  // of its first byte, an opening quote included
    std::uint16_t length;  // in the document, quotes included
    WordRole role;         // as an argument
    std::uint8_t directive;  // 1 + its row in kDirectives for a directive word, else 0

    const DirectiveSpec* spec() const { return directive == 0 ? nullptr : &kDirectives[directive - 1]; }
};

// The words of a document, in document order. Rebuilt at every change, a
// large one takes large pages.
using WordIndex = std::vector<Word, LargePageAllocator<Word>>;

// A KEYWORD: word, and the line the reader gives it.
struct KeywordStart {
    std::uint32_t offset;
    std::uint32_t line;
    bool operator==(const KeywordStart&) const = default;
};

// A byte range of a document.
struct Span {
    std::size_t offset = 0;
    std::size_t length = 0;
};

// A lint diagnostic with its place, its notes' places and the places its
// fixes replace, in the document.
struct Problem {
    lint::Diagnostic diagnostic;
    Span span;
    std::vector<Span> notes;
    std::vector<Span> fixes;
};

// The aliases file as the last analysis read it.
struct AliasesFile {
    std::string path;
    std::string text;
    DocumentText document;  // views `text`
    LineIndex lines;
    std::vector<lint::AliasUse> uses;
    std::vector<Problem> problems;
};

// A keyword's lines read again alone, descriptions kept, and the records
// read there that a word belongs to.
struct KeywordReading {
    std::shared_ptr<const lint::DefinitionLinter> reading;  // owns the records
    const KeywordDef* keyword = nullptr;
    const OptionDef* option = nullptr;  // whose lines hold the word, if any
};

// Everything the requests answer from: one complete lint of one snapshot of
// a document (a reading of the whole file, or an earlier analysis with the
// keyword a change fell in read again), its words and its lookup tables.

struct Analysis {
    // By keyword name, the first of each: the reading holding the name's
    // text (the whole file's or a keyword's read again).
    using KeywordsByName = std::unordered_map<std::string_view, const lint::DefinitionLinter*>;

    std::shared_ptr<const Snapshot> snapshot;
    std::uint64_t generation = 0;
    // The reading of the whole file, this version's or an earlier one's:
    // owns the lookup tables and the names' texts. Its keyword and option
    // records are let go (see recordsAt).
    std::shared_ptr<const lint::DefinitionLinter> linter;
    // The keywords read again alone since (see reanalyse): own their names.
    std::vector<std::shared_ptr<const lint::DefinitionLinter>> parts;
    // This version's keyword names and IDs, where each is first given.
    std::shared_ptr<const lint::TakenNames> names;
    WordIndex words;
    // By line as the reader counts them: the byte column after the line's
    // last word, where a comment can start. One entry per line read.
    std::vector<std::uint8_t> wordsEnd;
    std::vector<KeywordStart> keywordStarts;  // in document order
    std::unordered_map<std::string, std::uint32_t> tables;  // by name: the index of its LOOKUP: name word
    std::vector<Problem> problems;
    KeywordsByName keywords;
    std::unique_ptr<const AliasesFile> aliases;

    const DefinitionSet& definitions() const { return linter->definitions(); }
    std::string_view source(const Word& word) const {
        return snapshot->text.view(word.offset, word.length);
    }
    // The word as the reader took it: without its quote characters.
    std::string text(const Word& word) const;
    // The word covering `offset` (or ending right there), or null.
    const Word* wordAt(std::size_t offset) const;
    // The records of the keyword whose KEYWORD: is in force at the word and
    // of the option the word is in: the model keeps none, so the keyword's
    // lines are read again alone. Nulls where there is none.
    KeywordReading recordsAt(const Word& word) const;
};

// Lints the snapshot, with the aliases file at `aliasesPath` when one is
// given and readable. `expectedWords`, the count of an earlier version, lets
// a large document's word index be sized once instead of grown and copied.
// Once `stop` is set, reading ends early and the analysis is of no use.
std::shared_ptr<const Analysis> analyse(std::shared_ptr<const Snapshot> snapshot, std::uint64_t generation,
                                        const std::string& aliasesPath, std::size_t expectedWords,
                                        const std::atomic<bool>* stop = nullptr);

// The analysis of `snapshot` made by reading again only the keyword that
// changed since `previous` (an unchanged text keeps what `previous` has);
// null where that would not give what reading the whole file gives (an edit
// outside one keyword's lines, or one that changes what the rest of the file
// sees: its names, tables, once-per-file directives).
std::shared_ptr<const Analysis> reanalyse(const Analysis& previous, std::shared_ptr<const Snapshot> snapshot,
                                          std::uint64_t generation, const std::string& aliasesPath);

}  // namespace quillet::lsp
