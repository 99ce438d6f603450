#include <algorithm>

#include "lsp/requests.h"

namespace quillet::lsp {

namespace {

// Completion item kinds of the protocol.
constexpr int kKeywordItem = 14;
constexpr int kEnumItem = 13;
constexpr int kTypeItem = 25;  // type parameter: the nearest the protocol has

json directiveItems(bool keyword, bool option) {
    json items = json::array();
    for (const DirectiveSpec& spec : kDirectives) {
        const bool valid = spec.needs == Needs::Nothing || (spec.needs == Needs::Keyword && keyword) ||
                           (spec.needs == Needs::KeywordAndOption && option);
        if (valid)
            items.push_back({{"label", std::string(spec.word)},
                             {"kind", kKeywordItem},
                             {"detail", std::string(spec.synopsis)},
                             {"documentation", std::string(spec.description)}});
    }
    return items;
}

}  // namespace

json completion(const Analysis& analysis, std::size_t offset) {
    // The word before the one being typed sets the context.
    const auto& words = analysis.words;
    auto at = std::lower_bound(words.begin(), words.end(), offset,
                               [](const Word& word, std::size_t cursor) { return word.offset < cursor; });
    json items = json::array();
    if (at == words.begin()) return directiveItems(false, false);
    const Word& before = *std::prev(at);
    const bool typing = offset <= before.offset + before.length;
    const Word* previous = typing ? (std::prev(at) == words.begin() ? nullptr : &*std::prev(at, 2)) : &before;
    if (previous != nullptr && previous->spec() != nullptr && previous->spec()->directive == Directive::OPT_LOOKUP) {
        for (const auto& [name, table] : analysis.definitions().lookupTables)
            items.push_back({{"label", std::string(name)}, {"kind", kEnumItem}});
        return items;
    }
    if (previous != nullptr && previous->directive == 0) {
        switch (previous->role) {
        case WordRole::OptionId:
            for (const TypeName& type : kTypeNames)
                items.push_back({{"label", std::string(type.word)},
                                 {"kind", kTypeItem},
                                 {"documentation", std::string(type.accepts)}});
            return items;
        // Names, IDs and entries come next: nothing to offer.
        case WordRole::KeywordName:
        case WordRole::OptionName:
        case WordRole::OptionType:
        case WordRole::TableName:
        case WordRole::EntryId:
        case WordRole::EntryName: return items;
        default: break;
        }
    }
    // What is in force: a keyword since its KEYWORD:, an option since its OPTION:.
    bool keyword = false;
    bool option = false;
    for (auto word = std::prev(at);; --word) {
        if (const DirectiveSpec* spec = word->spec()) {
            if (spec->directive == Directive::OPTION) option = true;
            if (spec->directive == Directive::KEYWORD) {
                keyword = true;
                break;
            }
        }
        if (word == words.begin()) break;
    }
    return directiveItems(keyword, option && keyword);
}

}  // namespace quillet::lsp
