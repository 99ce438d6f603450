#include "diff/rule.h"

namespace quillet::diff {

std::string_view categoryName(Category category) {
    switch (category) {
    case Category::Breaking: return "breaking";
    case Category::Behaviour: return "behaviour";
    case Category::Compatible: return "compatible";
    }
    return "";
}

}  // namespace quillet::diff
