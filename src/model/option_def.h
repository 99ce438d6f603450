#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "model/option_type.h"

namespace quillet {

// One option of a keyword. Records are created only by DefinitionSet, which
// hands out the serial numbers. A large definition holds a million of them,
// so the flags are kept together.
struct OptionDef {
    std::string name;
    std::string id;
    std::string description;
    std::string lookupTableName;
    // An integer option's default when it is no number (a symbolic name,
    // resolved through its lookup table); a text option's default.
    std::string defaultText;
    std::string minimumText;
    std::string maximumText;
    // The typed default of the other types, read according to `type`.
    std::variant<std::int32_t, double, bool> defaultValue;
    int lineNumber = 0;
    int serial = 0;
    // Not meaningful until the type word has been read; the writers still
    // have to cope with a value outside the four known types.
    OptionType type = static_cast<OptionType>(-1);
    bool isComplete = false;
    bool hasLookupTable = false;
    bool lookupCaseSensitive = false;
    bool hasDefault = false;
    bool hasMinimum = false;
    bool hasMaximum = false;
    bool readOnly = false;

    explicit OptionDef(int serialNumber) : serial(serialNumber) {}
    OptionDef(const OptionDef&) = delete;
    OptionDef& operator=(const OptionDef&) = delete;

    // Unlike a keyword's description, an option's takes empty words too.
    void appendDescription(std::string_view word) { description.append(word).push_back(' '); }

    void setLookupTable(std::string_view tableName) {
        hasLookupTable = true;
        lookupTableName = tableName;
    }

    std::int32_t intDefault() const { return std::get<std::int32_t>(defaultValue); }
    double doubleDefault() const { return std::get<double>(defaultValue); }
    bool boolDefault() const { return std::get<bool>(defaultValue); }
    const std::string& stringDefault() const { return defaultText; }
};

}  // namespace quillet
