// What every reader of mesh files makes of its file.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "engine/formats/growing_array.h"

namespace zol::engine {

/// x, y, z in the unit of the file; always finite.
using MeshPoint = std::array<double, 3>;

/// Point indices from 0, always inside the list of points.
using MeshTriangle = std::array<std::int32_t, 3>;

struct MeshAttribute {
    std::string name;
    std::variant<bool, std::int64_t, double, std::string> value;
};

struct MeshLook {
    /// Red, green, blue; nothing where the file does not say.
    std::optional<std::array<std::uint8_t, 3>> colour;
    /// From 0, clear, to 1, opaque.
    std::optional<double> opacity;
    /// The file of the texture, as found from the mesh's own folder.
    std::optional<std::string> texture;
};

struct MeshData {
    GrowingArray<MeshPoint> points;
    GrowingArray<MeshTriangle> triangles;
    MeshLook look;
    std::vector<MeshAttribute> attributes;
};

}  // namespace zol::engine
