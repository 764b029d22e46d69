// The head of an OFF file: what its vertices are made of, and how many things there are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zol::engine {

/// What the first word says, "OFF" with letters in front: ST C N 4 n, in this order.
struct OffKind {
    bool has_texture = false;
    bool has_colour = false;
    bool has_normal = false;
    /// Points have a fourth coordinate, a weight.
    bool is_weighted = false;
    /// A number of dimensions stands in front of the counts.
    bool states_dimensions = false;
    /// Behind the word, on the same line.
    bool is_binary = false;

    /// Numbers of a vertex but for its colour.
    std::size_t PlainNumbers() const {
        return 3 + (is_weighted ? 1U : 0U) + (has_normal ? 3U : 0U) + (has_texture ? 2U : 0U);
    }
};

/// Reads the first word of `line` and takes it off, a number glued to it not; then the word
/// BINARY if it is there. Nothing, and all left, when the line begins otherwise.
std::optional<OffKind> take_off_word(std::string_view& line);

/// Throws ReadError when a file of `bytes` can't hold the vertices and faces that its header
/// states, given the least bytes of each, or when they are more than 32 bits count.
void check_off_counts(std::int64_t vertices, std::int64_t faces, std::uint64_t bytes,
                      std::uint64_t least_of_vertex, std::uint64_t least_of_face);

}  // namespace zol::engine
