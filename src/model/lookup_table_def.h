#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/text.h"

namespace quillet {

// A named table of (entry ID, entry name, value) triples, kept as three
// parallel lists in definition order.
struct LookupTableDef {
    std::vector<Text> names;
    std::vector<Text> ids;
    std::vector<std::int32_t> values;
    Text name;
    // Sentinels, printed as they stand for a table without entries.
    std::int32_t minValue = 999999999;
    std::int32_t maxValue = -999999999;

    explicit LookupTableDef(Text tableName) : name(tableName) {}
    LookupTableDef(const LookupTableDef&) = delete;
    LookupTableDef& operator=(const LookupTableDef&) = delete;

    std::size_t size() const { return values.size(); }

    // The searches stop at the first exact match, in entry order. (Entries
    // are found by ID through DefinitionSet, which indexes them.)
    bool findValueByName(std::string_view entryName, std::int32_t& value) const {
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i] == entryName) {
                value = values[i];
                return true;
            }
        }
        return false;
    }
    bool findNameByValue(std::int32_t value, Text& entryName) const {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (values[i] == value) {
                entryName = names[i];
                return true;
            }
        }
        return false;
    }
};

}  // namespace quillet
