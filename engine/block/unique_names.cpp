#include "engine/block/unique_names.h"

namespace zol::engine::block {

std::string name_or_ordinal(std::string name, std::size_t ordinal) {
    if (name.empty()) name = "variable " + std::to_string(ordinal);
    return name;
}

UniqueNames::UniqueNames() {
    for (const std::string_view name : kPredefinedNames) next_suffix_.emplace(name, 2);
}

std::string UniqueNames::Take(const std::string& wanted) {
    const auto [found, is_free] = next_suffix_.emplace(wanted, 2);
    if (is_free) return wanted;
    // A file may hold "grade_2" of its own before the second "grade". References
    // into the map stay good while it grows.
    std::uint64_t& suffix = found->second;
    for (;;) {
        std::string name = wanted + "_" + std::to_string(suffix++);
        if (next_suffix_.emplace(name, 2).second) return name;
    }
}

}  // namespace zol::engine::block
