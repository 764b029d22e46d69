#include "engine/formats/mesh/off_header.h"

#include <algorithm>
#include <string>

#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

std::optional<OffKind> take_off_word(std::string_view& line) {
    OffKind kind;
    std::string_view rest = line;
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t"), rest.size()));
    const auto takes = [&](std::string_view letters) {
        const bool found = rest.starts_with(letters);
        rest.remove_prefix(found ? letters.size() : 0);
        return found;
    };
    kind.has_texture = takes("ST");
    kind.has_colour = takes("C");
    kind.has_normal = takes("N");
    kind.is_weighted = takes("4");
    kind.states_dimensions = takes("n");
    if (!takes("OFF")) return std::nullopt;
    const bool is_whole_word =
        rest.empty() || rest[0] == ' ' || rest[0] == '\t' || (rest[0] >= '0' && rest[0] <= '9');
    if (!is_whole_word) return std::nullopt;
    line = rest;
    kind.is_binary = take_word(rest) == "BINARY";
    if (kind.is_binary) line = rest;
    return kind;
}

void check_off_counts(std::int64_t vertices, std::int64_t faces, std::uint64_t bytes,
                      std::uint64_t least_of_vertex, std::uint64_t least_of_face) {
    constexpr auto kMost = static_cast<std::int64_t>(kMostMeshElements);
    if (vertices < 0 || faces < 0) throw ReadError("the header states a count below 0");
    const bool fits = vertices <= kMost && faces <= kMost &&
                      static_cast<std::uint64_t>(vertices) * least_of_vertex +
                              static_cast<std::uint64_t>(faces) * least_of_face <=
                          bytes;
    if (!fits) {
        throw ReadError("the header states " + std::to_string(vertices) + " vertices and " +
                        std::to_string(faces) + " faces, more than the file has room for");
    }
    if (vertices == 0) throw ReadError("it has no points");
}

}  // namespace zol::engine
