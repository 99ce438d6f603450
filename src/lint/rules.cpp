#include "lint/rules.h"

namespace quillet::lint {

std::optional<RuleId> ruleNamed(std::string_view name) {
    for (const Rule& rule : kRules)
        if (rule.name == name) return rule.id;
    return std::nullopt;
}

}  // namespace quillet::lint
