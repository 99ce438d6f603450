#include "lint/rules.h"

#include <utility>

namespace quillet::lint {

namespace {

// A fragment of each of the tool's refusals, in the order they are tried.
constexpr std::pair<std::string_view, std::string_view> kMessageRules[] = {
    {"Cannot tokenize line", "unclosed-quote"},
    {"is not complete", "incomplete-directive"},
    {"can be applied to only one keyword", "once-per-file"},
    {"only for integer and double types", "wrong-option-type"},
    {"Cannot add lookup table to non-integer type", "wrong-option-type"},
    {"must be specified", "misplaced-directive"},
    {"must appear after", "misplaced-directive"},
    {"is not unique", "duplicate-name"},
    {"Too many args", "extra-argument"},
    {"only a single argument", "extra-argument"},
    {"Unknown type for current option", "unknown-type"},
    {"default value: '", "bad-default"},
    {"does not refer to an existing lookup table", "unknown-lookup-table"},
    {"invalid value", "bad-limit"},
    {"Minimum value :'", "bad-limit"},
    {"Maximum value :'", "bad-limit"},
    {"Value could not be parsed", "bad-lookup-value"},
};

}  // namespace

RuleId findRule(std::string_view name) {
    for (RuleId id = 0; id < kRules.size(); ++id)
        if (kRules[id].name == name) return id;
    return kRules.size();
}

RuleId ruleOfMessage(std::string_view message) {
    for (const auto& [fragment, rule] : kMessageRules)
        if (message.find(fragment) != std::string_view::npos) return findRule(rule);
    // Not reached: every first message of a refusal holds one of the fragments.
    return findRule("misplaced-directive");
}

}  // namespace quillet::lint
