#include <nlohmann/json.hpp>

#include "diff/report.h"

namespace quillet::diff {

namespace {

using Json = nlohmann::ordered_json;

Json orNull(const std::optional<Text>& value) { return value ? Json(value->view()) : Json(nullptr); }
Json orNull(const std::optional<int>& value) { return value ? Json(*value) : Json(nullptr); }

std::string singleQuoted(std::string_view word) { return '\'' + std::string(word) + '\''; }

}  // namespace

void writeJsonReport(std::ostream& out, const ChangeList& changes) {
    Json list = Json::array();
    for (const Change* entry : inReportOrder(changes)) {
        const Change& change = *entry;
        list.push_back(Json{
            {"category", categoryName(change.category())},
            {"rule", ruleInfo(change.rule).name},
            {"keyword", change.keyword.view()},
            {"option", orNull(change.option)},
            {"old", orNull(change.oldValue)},
            {"new", orNull(change.newValue)},
            {"old_line", orNull(change.oldLine)},
            {"new_line", orNull(change.newLine)},
            {"message", describe(change, singleQuoted)},
        });
    }
    const CategoryCounts counts = countCategories(changes);
    const Json report{
        {"changes", std::move(list)},
        {"summary", {{"breaking", counts.breaking}, {"behaviour", counts.behaviour}, {"compatible", counts.compatible}}},
    };
    // Definition texts are bytes, not necessarily UTF-8.
    out << report.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace quillet::diff
