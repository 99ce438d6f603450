#pragma once

namespace quillet {

// The numeric values are part of the definition language: the type words map
// onto them and the generated sources use the same words.
enum class OptionType : int {
    NQ_INT_TYPE = 0,
    NQ_DOUBLE_TYPE = 1,
    NQ_BOOL_TYPE = 2,
    NQ_STRING_TYPE = 3,
};

inline int typeNumber(OptionType type) { return static_cast<int>(type); }

}  // namespace quillet
