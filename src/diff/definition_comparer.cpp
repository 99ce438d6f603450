// Keywords and aliases: which words a script may type, and what each
// keyword's flags and texts say.
#include <algorithm>
#include <tuple>

#include "diff/comparer.h"
#include "diff/comparison.h"
#include "reader/directive.h"

namespace quillet::diff {

namespace {

constexpr const DirectiveSpec& directiveRow(Directive directive) {
    for (const DirectiveSpec& row : kDirectives)
        if (row.directive == directive) return row;
    return kDirectives[0];
}

// A keyword flag directive and the rules for giving it and for dropping it.
struct FlagRules {
    Directive directive;
    Rule added;
    Rule removed;
};

constexpr FlagRules kKeywordFlags[] = {
    {Directive::KEY_NO_OPTIONS, Rule::KEY_NO_OPTIONS_ADDED, Rule::KEY_NO_OPTIONS_REMOVED},
    {Directive::KEY_ALLOW_BLANK_OPERANDS, Rule::KEY_ALLOW_BLANK_OPERANDS_ADDED,
     Rule::KEY_ALLOW_BLANK_OPERANDS_REMOVED},
    {Directive::KEY_OPERANDS_ARE_MODEL_NAME, Rule::KEY_OPERANDS_ARE_MODEL_NAME_ADDED,
     Rule::KEY_OPERANDS_ARE_MODEL_NAME_REMOVED},
    {Directive::KEY_NO_NEW_MODEL, Rule::KEY_NO_NEW_MODEL_ADDED, Rule::KEY_NO_NEW_MODEL_REMOVED},
    {Directive::KEY_OPERANDS_NEED_FORMATTING, Rule::KEY_OPERANDS_NEED_FORMATTING_ADDED,
     Rule::KEY_OPERANDS_NEED_FORMATTING_REMOVED},
    {Directive::KEY_OPERANDS_REVERSE_FOR_NAME, Rule::KEY_OPERANDS_REVERSE_FOR_NAME_ADDED,
     Rule::KEY_OPERANDS_REVERSE_FOR_NAME_REMOVED},
    {Directive::KEY_PRESERVE_OPERANDS, Rule::KEY_PRESERVE_OPERANDS_ADDED, Rule::KEY_PRESERVE_OPERANDS_REMOVED},
    {Directive::KEY_NO_DEFAULTS, Rule::KEY_NO_DEFAULTS_ADDED, Rule::KEY_NO_DEFAULTS_REMOVED},
    {Directive::KEY_IS_DELETE, Rule::KEY_IS_DELETE_ADDED, Rule::KEY_IS_DELETE_REMOVED},
    {Directive::KEY_IS_RENAME, Rule::KEY_IS_RENAME_ADDED, Rule::KEY_IS_RENAME_REMOVED},
    {Directive::KEY_DEPRECATED, Rule::KEYWORD_DEPRECATED, Rule::KEYWORD_UNDEPRECATED},
    {Directive::KEY_NO_DOCUMENTATION, Rule::KEY_NO_DOCUMENTATION_ADDED, Rule::KEY_NO_DOCUMENTATION_REMOVED},
    {Directive::KEY_SHORT_DOCUMENTATION, Rule::KEY_SHORT_DOCUMENTATION_ADDED,
     Rule::KEY_SHORT_DOCUMENTATION_REMOVED},
};

// A keyword text and the rule for changing it.
struct TextRule {
    Text KeywordDef::*text;
    Rule changed;
};

constexpr TextRule kKeywordTexts[] = {
    {&KeywordDef::summary, Rule::SUMMARY_CHANGED},
    {&KeywordDef::description, Rule::DESCRIPTION_CHANGED},
    {&KeywordDef::operandSynopsis, Rule::OPERAND_SYNOPSIS_CHANGED},
    {&KeywordDef::operandDescription, Rule::OPERAND_DESCRIPTION_CHANGED},
};

bool byRule(const Change& a, const Change& b) {
    const std::size_t rankA = ruleNameRank(a.rule);
    const std::size_t rankB = ruleNameRank(b.rule);
    return std::tie(rankA, a.oldValue, a.newValue) < std::tie(rankB, b.oldValue, b.newValue);
}

}  // namespace

// What one word is on each side: a keyword, an alias (with the word it
// stands for), both or neither.
struct Comparison::Name {
    Text name;
    const KeywordDef* oldKeyword = nullptr;
    const KeywordDef* newKeyword = nullptr;
    std::optional<Text> oldTarget{};
    std::optional<Text> newTarget{};
};

ChangeList compareDefinitions(const DefinitionSet& oldSet, const DefinitionSet& newSet, TextArena& values) {
    return Comparison(oldSet, newSet, values).run();
}

ChangeList Comparison::run() {
    for (const Name& name : namesOf(old_, new_)) compareName(name);
    return std::move(changes_);
}

// Every word of both sides once, in name order. Alias records follow the
// keywords in their lists; a later line of the aliases file for the same
// alias redefines it, as the application reads the file.
std::vector<Comparison::Name> Comparison::namesOf(const DefinitionSet& oldSet, const DefinitionSet& newSet) {
    std::vector<Name> records;
    records.reserve(oldSet.keywords.size() + newSet.keywords.size());
    for (const bool isOld : {true, false}) {
        for (const KeywordDef* record : (isOld ? oldSet : newSet).keywords) {
            Name& name = records.emplace_back(Name{.name = record->name});
            if (!record->isAlias) (isOld ? name.oldKeyword : name.newKeyword) = record;
            else if (!record->aliases.empty()) (isOld ? name.oldTarget : name.newTarget) = record->aliases.front()->name;
        }
    }
    std::stable_sort(records.begin(), records.end(), [](const Name& a, const Name& b) { return a.name < b.name; });
    std::vector<Name> names;
    for (const Name& record : records) {
        if (names.empty() || names.back().name != record.name) names.push_back(Name{.name = record.name});
        Name& name = names.back();
        if (record.oldKeyword != nullptr) name.oldKeyword = record.oldKeyword;
        if (record.newKeyword != nullptr) name.newKeyword = record.newKeyword;
        if (record.oldTarget) name.oldTarget = record.oldTarget;
        if (record.newTarget) name.newTarget = record.newTarget;
    }
    return names;
}

// A keyword that became an alias, or an alias that became a keyword, is a
// word scripts can still type: one change of behaviour, not a removal.
void Comparison::compareName(const Name& name) {
    if (name.oldKeyword != nullptr && name.newKeyword != nullptr) {
        compareKeyword(*name.oldKeyword, *name.newKeyword);
    } else if (name.oldKeyword != nullptr) {
        if (name.newTarget) keywordChange(Rule::KEYWORD_MADE_ALIAS, name.oldKeyword, nullptr, {}, name.newTarget);
        else keywordChange(Rule::KEYWORD_REMOVED, name.oldKeyword, nullptr);
    } else if (name.newKeyword != nullptr) {
        if (name.oldTarget) keywordChange(Rule::ALIAS_MADE_KEYWORD, nullptr, name.newKeyword, name.oldTarget);
        else keywordChange(Rule::KEYWORD_ADDED, nullptr, name.newKeyword);
    }
    if (name.oldTarget && name.newTarget) {
        if (*name.oldTarget != *name.newTarget)
            aliasChange(Rule::ALIAS_TARGET_CHANGED, name.name, name.oldTarget, name.newTarget);
    } else if (name.oldTarget && name.newKeyword == nullptr) {
        aliasChange(Rule::ALIAS_REMOVED, name.name, name.oldTarget, {});
    } else if (name.newTarget && name.oldKeyword == nullptr) {
        aliasChange(Rule::ALIAS_ADDED, name.name, {}, name.newTarget);
    }
    closeGroup();
    if (name.oldKeyword != nullptr && name.newKeyword != nullptr) compareOptions(*name.oldKeyword, *name.newKeyword);
}

void Comparison::compareKeyword(const KeywordDef& oldKeyword, const KeywordDef& newKeyword) {
    if (oldKeyword.id != newKeyword.id)
        keywordChange(Rule::KEYWORD_ID_CHANGED, &oldKeyword, &newKeyword, oldKeyword.id, newKeyword.id);
    for (const TextRule& text : kKeywordTexts)
        if (oldKeyword.*text.text != newKeyword.*text.text)
            keywordChange(text.changed, &oldKeyword, &newKeyword, keepQuoted(oldKeyword.*text.text),
                          keepQuoted(newKeyword.*text.text));
    for (const FlagRules& flag : kKeywordFlags) {
        const DirectiveSpec& row = directiveRow(flag.directive);
        const bool before = oldKeyword.*row.keywordFlag == row.flagValue;
        const bool after = newKeyword.*row.keywordFlag == row.flagValue;
        if (before != after) keywordChange(after ? flag.added : flag.removed, &oldKeyword, &newKeyword);
    }
    if (oldKeyword.operandsAreModelName && newKeyword.operandsAreModelName &&
        oldKeyword.numTokensInModelName != newKeyword.numTokensInModelName)
        keywordChange(Rule::MODEL_NAME_TOKENS_CHANGED, &oldKeyword, &newKeyword, oldKeyword.numTokensInModelName,
                      newKeyword.numTokensInModelName);
}

void Comparison::keywordChange(Rule rule, const KeywordDef* oldKeyword, const KeywordDef* newKeyword, Value oldValue,
                               Value newValue) {
    Change& change = changes_.emplace_back(
        Change{.rule = rule, .keyword = (oldKeyword != nullptr ? oldKeyword : newKeyword)->name});
    change.oldValue = oldValue;
    change.newValue = newValue;
    if (oldKeyword != nullptr) change.oldLine = oldKeyword->lineNumber;
    if (newKeyword != nullptr) change.newLine = newKeyword->lineNumber;
}

// The aliases file's lines are not kept, so alias changes name no line.
void Comparison::aliasChange(Rule rule, Text alias, Value oldValue, Value newValue) {
    Change& change = changes_.emplace_back(Change{.rule = rule, .keyword = alias});
    change.oldValue = oldValue;
    change.newValue = newValue;
}

// Shown without the blank the reader appends to every word of a text.
Text Comparison::keepQuoted(Text text) {
    std::string_view words = text;
    if (!words.empty() && words.back() == ' ') words.remove_suffix(1);
    quoted_.assign(1, '"').append(words).push_back('"');
    return keep(quoted_);
}

void Comparison::closeGroup() {
    std::sort(changes_.begin() + static_cast<std::ptrdiff_t>(groupStart_), changes_.end(), byRule);
    groupStart_ = changes_.size();
}

}  // namespace quillet::diff
