#include "lsp/requests.h"

namespace quillet::lsp {

namespace {

Span spanOf(const Word& word) { return {word.offset, word.length}; }

bool isName(WordRole role) {
    return role == WordRole::KeywordName || role == WordRole::KeywordId || role == WordRole::OptionName ||
           role == WordRole::OptionId || role == WordRole::TableName || role == WordRole::EntryId;
}

// The argument words of `role` whose text is `text`, compared on the
// source first as a word is seldom quoted.
template <typename Visit>
void eachWord(const Analysis& analysis, WordRole role, std::string_view text, Visit visit) {
    for (const Word& word : analysis.words) {
        if (word.role != role || word.directive != 0) continue;
        const std::string_view source = analysis.source(word);
        if (source == text || (source.find('"') != std::string_view::npos && analysis.text(word) == text))
            visit(word);
    }
}

const Word* tableWord(const Analysis& analysis, const std::string& name) {
    const auto found = analysis.tables.find(name);
    return found == analysis.tables.end() ? nullptr : &analysis.words[found->second];
}

// The entry of the table named `entryName`, searched from its LOOKUP: on.
const Word* entryWord(const Analysis& analysis, const Word& table, std::string_view entryName) {
    for (const Word* word = &table + 1; word < analysis.words.data() + analysis.words.size(); ++word) {
        if (word->directive != 0) break;
        if (word->role == WordRole::EntryName && analysis.text(*word) == entryName) return word;
    }
    return nullptr;
}

}  // namespace

json definition(const Analysis& analysis, const std::string& uri, std::size_t offset, const TextView& view) {
    const Word* word = analysis.wordAt(offset);
    if (word == nullptr || word->directive != 0) return nullptr;
    if (word->role == WordRole::TableReference) {
        const Word* table = tableWord(analysis, analysis.text(*word));
        return table == nullptr ? json(nullptr) : location(uri, view, spanOf(*table));
    }
    if (word->role == WordRole::OptionDefault) {
        const KeywordReading records = analysis.recordsAt(*word);
        const OptionDef* option = records.option;
        if (option == nullptr || !option->hasLookupTable || option->defaultText.empty()) return nullptr;
        const Word* table = tableWord(analysis, std::string(option->lookupTableName.view()));
        const Word* entry = table == nullptr ? nullptr : entryWord(analysis, *table, option->defaultText);
        return entry == nullptr ? json(nullptr) : location(uri, view, spanOf(*entry));
    }
    if (!isName(word->role)) return nullptr;
    // A name defined twice leads to its first definition, where lint's
    // note points away from the duplicate.
    for (const Problem& problem : analysis.problems) {
        if (problem.span.offset != word->offset || problem.diagnostic.rule != lint::RuleId::DuplicateName) continue;
        for (const Span& note : problem.notes)
            if (note.offset != word->offset) return location(uri, view, note);
    }
    return location(uri, view, spanOf(*word));
}

json references(const Analysis& analysis, const std::string& uri, std::size_t offset, bool withDeclaration,
                const TextView& view) {
    const Word* word = analysis.wordAt(offset);
    if (word == nullptr || word->directive != 0) return nullptr;
    json found = json::array();
    if (word->role == WordRole::TableName || word->role == WordRole::TableReference) {
        const std::string name = analysis.text(*word);
        if (const Word* table = tableWord(analysis, name); table != nullptr && withDeclaration)
            found.push_back(location(uri, view, spanOf(*table)));
        eachWord(analysis, WordRole::TableReference, name,
                 [&](const Word& use) { found.push_back(location(uri, view, spanOf(use))); });
        return found;
    }
    if (word->role != WordRole::KeywordName && word->role != WordRole::KeywordId) return nullptr;
    const KeywordReading records = analysis.recordsAt(*word);
    const KeywordDef* keyword = records.keyword;
    if (keyword == nullptr) return nullptr;
    if (withDeclaration)
        eachWord(analysis, WordRole::KeywordName, keyword->name,
                 [&](const Word& name) { found.push_back(location(uri, view, spanOf(name))); });
    if (analysis.aliases) {
        const AliasesFile& aliases = *analysis.aliases;
        const std::string aliasesUri = uriOfPath(aliases.path);
        const TextView aliasesView{aliases.document, aliases.lines, view.encoding};
        for (const lint::AliasUse& use : aliases.uses) {
            if (use.keyword != keyword->name.view()) continue;
            // The use views the file's own text.
            const auto at = static_cast<std::size_t>(use.alias.data() - aliases.text.data());
            found.push_back(location(aliasesUri, aliasesView, {at, use.alias.size()}));
        }
    }
    return found;
}

}  // namespace quillet::lsp
