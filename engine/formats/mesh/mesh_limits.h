// What a mesh may hold, the same for every reader.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

/// Points and triangles are counted in 32 bits.
inline constexpr std::uint64_t kMostMeshElements = 2147483647;

/// Products of three differences of coordinates stay finite.
inline constexpr double kMostCoordinate = 1e100;

/// False for a coordinate that is no finite number, or is beyond kMostCoordinate.
inline bool are_coordinates(const MeshPoint& point) {
    const auto fits = [](double x) { return x >= -kMostCoordinate && x <= kMostCoordinate; };
    return fits(point[0]) && fits(point[1]) && fits(point[2]);
}

inline constexpr const char* kNoCoordinates =
    "a coordinate is not a finite number or is beyond 1e100";

}  // namespace zol::engine
