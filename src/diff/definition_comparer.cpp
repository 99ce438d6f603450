// Keywords and aliases: which words a script may type, and what each
// keyword's flags and texts say.
#include <algorithm>

#include "diff/comparer.h"
#include "diff/comparison.h"
#include "reader/directive.h"

namespace quillet::diff {

namespace {

constexpr const DirectiveSpec& directiveSpec(Directive directive) {
    for (const DirectiveSpec& spec : kDirectives)
        if (spec.directive == directive) return spec;
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

// Alias records follow the keywords in the list. A later line of the
// aliases file for the same alias redefines it, as the application reads it.
void index(const DefinitionSet& definitions, std::unordered_map<std::string_view, const KeywordDef*>& keywords,
           std::unordered_map<std::string_view, std::string_view>& aliases) {
    keywords.reserve(definitions.keywords.size());
    for (const KeywordDef* record : definitions.keywords) {
        if (!record->isAlias) keywords.emplace(record->name, record);
        else if (!record->aliases.empty()) aliases[record->name] = record->aliases.front()->name;
    }
}

template <typename Map>
bool has(const Map& map, std::string_view name) {
    return map.find(name) != map.end();
}

}  // namespace

std::vector<Change> compareDefinitions(const DefinitionSet& oldSet, const DefinitionSet& newSet) {
    return Comparison(oldSet, newSet).run();
}

std::vector<Change> Comparison::run() {
    index(old_, oldKeywords_, oldAliases_);
    index(new_, newKeywords_, newAliases_);
    compareKeywords();
    compareAliases();
    std::sort(changes_.begin(), changes_.end(), reportOrder);
    return std::move(changes_);
}

// A keyword that became an alias, or an alias that became a keyword, is a
// word scripts can still type: one change of behaviour, not a removal.
void Comparison::compareKeywords() {
    for (const KeywordDef* oldKeyword : old_.keywords) {
        if (oldKeyword->isAlias) continue;
        if (auto found = newKeywords_.find(oldKeyword->name); found != newKeywords_.end())
            compareKeyword(*oldKeyword, *found->second);
        else if (auto alias = newAliases_.find(oldKeyword->name); alias != newAliases_.end())
            keywordChange(Rule::KEYWORD_MADE_ALIAS, oldKeyword, nullptr, {}, std::string(alias->second));
        else
            keywordChange(Rule::KEYWORD_REMOVED, oldKeyword, nullptr);
    }
    for (const KeywordDef* newKeyword : new_.keywords) {
        if (newKeyword->isAlias || has(oldKeywords_, newKeyword->name)) continue;
        if (auto alias = oldAliases_.find(newKeyword->name); alias != oldAliases_.end())
            keywordChange(Rule::ALIAS_MADE_KEYWORD, nullptr, newKeyword, std::string(alias->second));
        else
            keywordChange(Rule::KEYWORD_ADDED, nullptr, newKeyword);
    }
}

// Aliases that turned into keywords or back were reported with the keywords.
void Comparison::compareAliases() {
    for (const auto& [alias, oldTarget] : oldAliases_) {
        auto found = newAliases_.find(alias);
        if (found == newAliases_.end()) {
            if (!has(newKeywords_, alias)) aliasChange(Rule::ALIAS_REMOVED, alias, std::string(oldTarget), {});
        } else if (found->second != oldTarget) {
            aliasChange(Rule::ALIAS_TARGET_CHANGED, alias, std::string(oldTarget), std::string(found->second));
        }
    }
    for (const auto& [alias, newTarget] : newAliases_)
        if (!has(oldAliases_, alias) && !has(oldKeywords_, alias))
            aliasChange(Rule::ALIAS_ADDED, alias, {}, std::string(newTarget));
}

void Comparison::compareKeyword(const KeywordDef& oldKeyword, const KeywordDef& newKeyword) {
    if (oldKeyword.id != newKeyword.id)
        keywordChange(Rule::KEYWORD_ID_CHANGED, &oldKeyword, &newKeyword, std::string(oldKeyword.id.view()),
                      std::string(newKeyword.id.view()));
    for (const TextRule& text : kKeywordTexts)
        if (oldKeyword.*text.text != newKeyword.*text.text)
            keywordChange(text.changed, &oldKeyword, &newKeyword, quotedText(oldKeyword.*text.text),
                          quotedText(newKeyword.*text.text));
    for (const FlagRules& flag : kKeywordFlags) {
        const DirectiveSpec& spec = directiveSpec(flag.directive);
        const bool before = oldKeyword.*spec.keywordFlag == spec.flagValue;
        const bool after = newKeyword.*spec.keywordFlag == spec.flagValue;
        if (before != after) keywordChange(after ? flag.added : flag.removed, &oldKeyword, &newKeyword);
    }
    if (oldKeyword.operandsAreModelName && newKeyword.operandsAreModelName &&
        oldKeyword.numTokensInModelName != newKeyword.numTokensInModelName)
        keywordChange(Rule::MODEL_NAME_TOKENS_CHANGED, &oldKeyword, &newKeyword,
                      std::string(oldKeyword.numTokensInModelName.view()),
                      std::string(newKeyword.numTokensInModelName.view()));
    compareOptions(oldKeyword, newKeyword);
}

void Comparison::keywordChange(Rule rule, const KeywordDef* oldKeyword, const KeywordDef* newKeyword, Value oldValue,
                               Value newValue) {
    Change change{.rule = rule, .keyword = std::string((oldKeyword != nullptr ? oldKeyword : newKeyword)->name.view())};
    change.oldValue = std::move(oldValue);
    change.newValue = std::move(newValue);
    if (oldKeyword != nullptr) change.oldLine = oldKeyword->lineNumber;
    if (newKeyword != nullptr) change.newLine = newKeyword->lineNumber;
    changes_.push_back(std::move(change));
}

// The aliases file's lines are not kept, so alias changes name no line.
void Comparison::aliasChange(Rule rule, std::string_view alias, Value oldValue, Value newValue) {
    Change change{.rule = rule, .keyword = std::string(alias)};
    change.oldValue = std::move(oldValue);
    change.newValue = std::move(newValue);
    changes_.push_back(std::move(change));
}

}  // namespace quillet::diff
