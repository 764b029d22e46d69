// Names by which callers tell variables apart, whatever a file calls them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zol::engine::block {

/// Variables that every model has; they are computed, and no file's variable may
/// have such a name.
inline constexpr std::array<std::string_view, 8> kPredefinedNames = {
    "centroid_x", "centroid_y", "centroid_z", "size_x",
    "size_y",     "size_z",     "volume",     "block_index"};

/// A file's own name for a variable; "variable 3" for the third when it has none.
std::string name_or_ordinal(std::string name, std::size_t ordinal);

/// Names given out so far, the predefined ones from the start. Costs the same for
/// a name that a file repeats a million times.
class UniqueNames {
public:
    UniqueNames();

    /// `wanted`, which is not empty, when it is still free, else with "_2", "_3" and
    /// so on.
    std::string Take(const std::string& wanted);

private:
    // By name: the suffix to try next.
    std::unordered_map<std::string, std::uint64_t> next_suffix_;
};

}  // namespace zol::engine::block
