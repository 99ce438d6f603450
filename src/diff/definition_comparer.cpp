// Keywords and aliases: which words a script may type, and what each
// keyword's flags and texts say.
#include <algorithm>
#include <tuple>

#include "diff/comparer.h"
#include "diff/comparison.h"

namespace quillet::diff {

namespace {

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

// What one word is on each side: a keyword, an alias (with the record it
// stands for), both or neither.
struct Comparison::Name {
    Text name;
    const KeywordDef* oldKeyword = nullptr;
    const KeywordDef* newKeyword = nullptr;
    const KeywordDef* oldTarget = nullptr;
    const KeywordDef* newTarget = nullptr;
};

namespace {

std::optional<Text> nameOf(const KeywordDef* record) {
    if (record == nullptr) return std::nullopt;
    return record->name;
}

// The command a script typing the word runs: the keyword of that name, else
// the keyword its alias stands for. An alias of an alias (or of itself) is
// not followed: what the application makes of it is not known here.
const KeywordDef* commandOf(const KeywordDef* keyword, const KeywordDef* target) {
    if (keyword != nullptr) return keyword;
    return target != nullptr && !target->isAlias ? target : nullptr;
}

}  // namespace

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
            else if (!record->aliases.empty()) (isOld ? name.oldTarget : name.newTarget) = record->aliases.front();
        }
    }
    std::stable_sort(records.begin(), records.end(), [](const Name& a, const Name& b) { return a.name < b.name; });
    std::vector<Name> names;
    for (const Name& record : records) {
        if (names.empty() || names.back().name != record.name) names.push_back(Name{.name = record.name});
        Name& name = names.back();
        if (record.oldKeyword != nullptr) name.oldKeyword = record.oldKeyword;
        if (record.newKeyword != nullptr) name.newKeyword = record.newKeyword;
        if (record.oldTarget != nullptr) name.oldTarget = record.oldTarget;
        if (record.newTarget != nullptr) name.newTarget = record.newTarget;
    }
    return names;
}

// A keyword that became an alias, or an alias that became a keyword, is a
// word scripts can still type: one change of behaviour, not a removal. But
// the word may now run another command, whose options are what scripts
// typing it may give from now on.
void Comparison::compareName(const Name& name) {
    const std::optional<Text> oldTarget = nameOf(name.oldTarget);
    const std::optional<Text> newTarget = nameOf(name.newTarget);
    if (name.oldKeyword != nullptr && name.newKeyword != nullptr) {
        compareKeyword(*name.oldKeyword, *name.newKeyword);
    } else if (name.oldKeyword != nullptr) {
        if (newTarget) keywordChange(Rule::KEYWORD_MADE_ALIAS, name.oldKeyword, nullptr, {}, newTarget);
        else keywordChange(Rule::KEYWORD_REMOVED, name.oldKeyword, nullptr);
    } else if (name.newKeyword != nullptr) {
        if (oldTarget) keywordChange(Rule::ALIAS_MADE_KEYWORD, nullptr, name.newKeyword, oldTarget);
        else keywordChange(Rule::KEYWORD_ADDED, nullptr, name.newKeyword);
    }
    if (oldTarget && newTarget) {
        if (*oldTarget != *newTarget) aliasChange(Rule::ALIAS_TARGET_CHANGED, name.name, oldTarget, newTarget);
    } else if (oldTarget && name.newKeyword == nullptr) {
        aliasChange(Rule::ALIAS_REMOVED, name.name, oldTarget, {});
    } else if (newTarget && name.oldKeyword == nullptr) {
        aliasChange(Rule::ALIAS_ADDED, name.name, {}, newTarget);
    }
    closeGroup();
    if (name.oldKeyword != nullptr && name.newKeyword != nullptr) {
        compareOptions(name.name, *name.oldKeyword, *name.newKeyword, true);
        return;
    }
    // Where both sides run the same other command, that command's own name
    // reports what changed in it.
    const KeywordDef* before = commandOf(name.oldKeyword, name.oldTarget);
    const KeywordDef* after = commandOf(name.newKeyword, name.newTarget);
    if (before != nullptr && after != nullptr && before->name != after->name)
        compareOptions(name.name, *before, *after, false);
}

void Comparison::compareKeyword(const KeywordDef& oldKeyword, const KeywordDef& newKeyword) {
    if (oldKeyword.id != newKeyword.id)
        keywordChange(Rule::KEYWORD_ID_CHANGED, &oldKeyword, &newKeyword, oldKeyword.id, newKeyword.id);
    for (const TextRule& text : kKeywordTexts)
        if (oldKeyword.*text.text != newKeyword.*text.text)
            keywordChange(text.changed, &oldKeyword, &newKeyword, keepQuoted(oldKeyword.*text.text),
                          keepQuoted(newKeyword.*text.text));
    // Every keyword flag of the language, with the rules its row gives.
    for (const DirectiveSpec& row : kDirectives) {
        if (row.keywordFlag == nullptr) continue;
        const bool before = oldKeyword.*row.keywordFlag == row.flagValue;
        const bool after = newKeyword.*row.keywordFlag == row.flagValue;
        if (before != after) keywordChange(flagRule(row, after), &oldKeyword, &newKeyword);
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
