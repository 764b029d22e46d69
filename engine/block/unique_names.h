// Names by which callers tell variables apart, whatever a file calls them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace zol::engine::block {

/// Variables that every model has; they are computed, and no file's variable may
/// have such a name.
inline constexpr std::array<std::string_view, 8> kPredefinedNames = {
    "centroid_x", "centroid_y", "centroid_z", "size_x",
    "size_y",     "size_z",     "volume",     "block_index"};

/// Bytes of a name. Callers get names in buffers of 255, and ask by what they got.
inline constexpr std::size_t kLongestName = 254;

/// A file's own name for a variable; "variable 3" for the third when it has none.
std::string name_or_ordinal(std::string name, std::size_t ordinal);

/// Names given out so far, the predefined ones from the start. Costs the same for
/// a name that a file repeats a million times.
class UniqueNames {
public:
    UniqueNames();

    /// `wanted`, which is not empty, cut to kLongestName where it is longer, when that
    /// is still free; else with "_2", "_3" and so on behind what leaves room for it.
    std::string Take(const std::string& wanted);

private:
    std::unordered_set<std::string> taken_;
    // By what stands before a suffix: the one to try next.
    std::unordered_map<std::string, std::uint64_t> next_suffix_;
};

}  // namespace zol::engine::block
