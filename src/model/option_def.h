#pragma once

#include <cstdint>
#include <optional>

#include "model/option_type.h"
#include "model/text.h"

namespace quillet {

// One option of a keyword. Records are created only by DefinitionSet, which
// hands out the serial numbers.
struct OptionDef {
    Text name;
    Text id;
    Text description;
    Text lookupTableName;
    // An integer option's default when it is no number (a symbolic name,
    // resolved through its lookup table); a text option's default.
    Text defaultText;
    Text minimumText;
    Text maximumText;
    // The typed default of the other types, read according to `type`.
    union {
        std::int32_t intValue;
        double doubleValue;
        bool boolValue;
    } defaultValue{0};
    int lineNumber = 0;
    int serial = 0;
    // None until the type word has been read; the writers still have to cope
    // with an option that never got one.
    std::optional<OptionType> type;
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

    std::int32_t intDefault() const { return defaultValue.intValue; }
    double doubleDefault() const { return defaultValue.doubleValue; }
    bool boolDefault() const { return defaultValue.boolValue; }
    Text stringDefault() const { return defaultText; }
};

}  // namespace quillet
