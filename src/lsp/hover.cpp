#include <sstream>

#include "lint/quoting.h"
#include "lsp/requests.h"

namespace quillet::lsp {

namespace {

using lint::code;

// A text as the reader accumulated it, without the blank after its last word.
std::string prose(std::string_view text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return std::string(text);
}

std::string directiveText(const DirectiveSpec& spec) {
    std::string text = "**" + code(spec.word) + "** " + std::string(spec.synopsis) + "\n\n" +
                       std::string(spec.description);
    switch (spec.needs) {
    case Needs::Nothing: break;
    case Needs::Keyword: text += "\n\nNeeds a keyword in force."; break;
    case Needs::KeywordAndOption: text += "\n\nNeeds a keyword and an option in force."; break;
    }
    return text;
}

std::string keywordText(const KeywordDef& keyword) {
    std::string text = "**keyword** " + code(keyword.name) + "\n\nID " + code(keyword.id);
    if (!keyword.summary.empty()) text += "\n\n" + prose(keyword.summary);
    std::string flags;
    for (const DirectiveSpec& spec : kDirectives)
        if (spec.keywordFlag != nullptr && keyword.*spec.keywordFlag == spec.flagValue)
            flags += (flags.empty() ? "" : ", ") + code(spec.word);
    if (!flags.empty()) text += "\n\nFlags: " + flags;
    text += "\n\n" + std::to_string(keyword.options.size()) + (keyword.options.size() == 1 ? " option" : " options");
    return text;
}

std::string typeWord(const OptionDef& option) {
    for (const TypeName& name : kTypeNames)
        if (option.type == name.type) return std::string(name.word);
    return "none";
}

std::string defaultOf(const OptionDef& option) {
    if (!option.type) return "none";
    std::ostringstream shown;
    switch (*option.type) {
    case OptionType::NQ_INT_TYPE:
        if (!option.defaultText.empty()) shown << code(option.defaultText) << " ";
        if (option.hasDefault) shown << option.intDefault();
        else if (option.defaultText.empty()) shown << "none";
        else shown << "(no entry has this name: no default)";
        break;
    case OptionType::NQ_DOUBLE_TYPE:
        if (option.hasDefault) shown << option.doubleDefault();
        else shown << "none";
        break;
    case OptionType::NQ_BOOL_TYPE:
        shown << (!option.hasDefault ? "none" : option.boolDefault() ? "true" : "false");
        break;
    case OptionType::NQ_STRING_TYPE: shown << (option.hasDefault ? code(option.defaultText) : "none"); break;
    }
    return shown.str();
}

// Lists rather than tables: every client's markdown shows them.
std::string optionText(const OptionDef& option) {
    std::string text = "**option** " + code(option.name) + "\n\nID " + code(option.id);
    text += "\n\n- type " + code(typeWord(option)) + "\n- default " + defaultOf(option);
    if (option.hasMinimum) text += "\n- minimum " + code(option.minimumText);
    if (option.hasMaximum) text += "\n- maximum " + code(option.maximumText);
    if (option.hasLookupTable) text += "\n- lookup table " + code(option.lookupTableName);
    if (!option.description.empty()) text += "\n\n" + prose(option.description);
    return text;
}

std::string tableText(const LookupTableDef& table) {
    constexpr std::size_t kShown = 50;  // a hover is no place for a thousand rows
    std::string text = "**lookup table** " + code(table.name) + ", " + std::to_string(table.size()) +
                       (table.size() == 1 ? " entry" : " entries");
    if (table.size() > 0) text += "\n";
    for (std::size_t i = 0; i < table.size() && i < kShown; ++i)
        text += "\n- " + code(table.ids[i]) + " " + code(table.names[i]) + " = " + std::to_string(table.values[i]);
    if (table.size() > kShown) text += "\n\n… and " + std::to_string(table.size() - kShown) + " more";
    return text;
}

std::string typeText(std::string_view word) {
    for (const TypeName& name : kTypeNames)
        if (name.word == word) return "**type** " + code(name.word) + "\n\n" + std::string(name.accepts);
    return {};
}

// A default naming an entry of the option's lookup table.
std::string symbolicDefaultText(const Analysis& analysis, const OptionDef& option) {
    if (option.type != OptionType::NQ_INT_TYPE || option.defaultText.empty() || !option.hasLookupTable) return {};
    const LookupTableDef* table = analysis.definitions().findLookupTable(option.lookupTableName);
    if (table == nullptr) return {};
    for (std::size_t i = 0; i < table->size(); ++i)
        if (table->names[i] == option.defaultText)
            return "**lookup entry** " + code(table->names[i]) + " of " + code(table->name) + "\n\nID " +
                   code(table->ids[i]) + ", value " + std::to_string(table->values[i]);
    return "No entry of " + code(table->name) + " is named " + code(option.defaultText) + ".";
}

// A keyword's or an option's word: its record, read again.
std::string recordText(const Analysis& analysis, const Word& word) {
    const KeywordReading records = analysis.recordsAt(word);
    if (word.role == WordRole::KeywordName || word.role == WordRole::KeywordId)
        return records.keyword == nullptr ? std::string() : keywordText(*records.keyword);
    if (records.option == nullptr) return {};
    return word.role == WordRole::OptionDefault ? symbolicDefaultText(analysis, *records.option)
                                                : optionText(*records.option);
}

std::string wordText(const Analysis& analysis, const Word& word) {
    if (const DirectiveSpec* spec = word.spec()) return directiveText(*spec);
    switch (word.role) {
    case WordRole::KeywordName:
    case WordRole::KeywordId:
    case WordRole::OptionName:
    case WordRole::OptionId:
    case WordRole::OptionDefault: return recordText(analysis, word);
    case WordRole::TableName:
    case WordRole::TableReference:
        if (const LookupTableDef* table = analysis.definitions().findLookupTable(analysis.text(word)))
            return tableText(*table);
        break;
    case WordRole::OptionType: return typeText(analysis.text(word));
    default: break;
    }
    return {};
}

}  // namespace

json hover(const Analysis& analysis, std::size_t offset, const TextView& view) {
    const Word* word = analysis.wordAt(offset);
    if (word == nullptr) return nullptr;
    std::string text = wordText(analysis, *word);
    if (text.empty()) return nullptr;
    return {{"contents", {{"kind", "markdown"}, {"value", std::move(text)}}},
            {"range", view.range({word->offset, word->length})}};
}

}  // namespace quillet::lsp
