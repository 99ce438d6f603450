#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace quillet {

// The numeric values are part of the definition language: the type words map
// onto them and the generated sources use the same words.
enum class OptionType : int {
    NQ_INT_TYPE = 0,
    NQ_DOUBLE_TYPE = 1,
    NQ_BOOL_TYPE = 2,
    NQ_STRING_TYPE = 3,
};

struct TypeName {
    std::string_view word;
    OptionType type;
    std::string_view accepts;  // as a default, for the language server's hover
};

// The type words of the third OPTION: argument, matched exactly.
inline constexpr std::array<TypeName, 4> kTypeNames{{
    {"NQ_INT_TYPE", OptionType::NQ_INT_TYPE,
     "An integer: decimal (-5), hexadecimal (0x1F) or a shift (1<4), kept in 32 bits; or the name of an entry of "
     "the option's lookup table."},
    {"NQ_DOUBLE_TYPE", OptionType::NQ_DOUBLE_TYPE, "A floating-point number (1, -2.5, 1e-7, .5)."},
    {"NQ_BOOL_TYPE", OptionType::NQ_BOOL_TYPE, "true or on, false or off."},
    {"NQ_STRING_TYPE", OptionType::NQ_STRING_TYPE, "Any word; quote it to hold blanks."},
}};

inline std::optional<OptionType> findOptionType(std::string_view word) {
    for (const TypeName& name : kTypeNames)
        if (name.word == word) return name.type;
    return std::nullopt;
}

// The number an "Unknown type" report prints; -1 for an option that never
// received its type word.
inline int typeNumber(std::optional<OptionType> type) { return type ? static_cast<int>(*type) : -1; }

}  // namespace quillet
