#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <string_view>

#include "support/little_endian.h"
#include "tools/zol/mesh_normal.h"
#include "tools/zol/mesh_writers.h"

namespace zol::tool {

namespace {

constexpr std::size_t kStlHeader = 80;
constexpr std::size_t kStlFacet = 50;
constexpr std::size_t kPlyPoint = 28;
constexpr std::size_t kPlyFace = 13;

/// A record of fixed size that is filled from its start, least bytes first.
template <std::size_t Size>
class Record {
public:
    void Put(double value) { Store(std::bit_cast<std::uint64_t>(value), sizeof value); }
    void Put(float value) { Store(std::bit_cast<std::uint32_t>(value), sizeof value); }
    void Put(std::int32_t value) { Store(static_cast<std::uint32_t>(value), sizeof value); }
    void Put(unsigned char value) { Store(value, sizeof value); }
    void Skip(std::size_t bytes) { filled_ += bytes; }

    /// Writes what is filled.
    void WriteTo(Output& output) const {
        output.Write({reinterpret_cast<const char*>(bytes_.data()), filled_});
    }

private:
    void Store(std::uint64_t value, std::size_t bytes) {
        support::store_little_endian(value, bytes_.data() + filled_, bytes);
        filled_ += bytes;
    }

    std::array<unsigned char, Size> bytes_{};
    std::size_t filled_ = 0;
};

using Rgba = std::array<unsigned char, 4>;

Rgba rgba_of(const Appearance& look) {
    constexpr double kFull = 255;
    const double opacity = std::clamp(1 - look.translucency, 0.0, 1.0);
    const auto& [red, green, blue] = look.colour;
    return {static_cast<unsigned char>(red), static_cast<unsigned char>(green),
            static_cast<unsigned char>(blue),
            static_cast<unsigned char>(std::lround(opacity * kFull))};
}

bool fits_a_line(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; });
}

std::string ply_header(const Mesh& mesh, const Appearance& look) {
    std::string header = "ply\nformat binary_little_endian 1.0\n";
    // Readers look for it beside the file.
    const std::string texture = std::filesystem::path(look.texture).filename().string();
    if (look.is_textured && fits_a_line(texture)) {
        header += "comment TextureFile " + texture + '\n';
    }
    header += "element vertex " + std::to_string(mesh.NPoints()) + '\n';
    for (const char axis : {'x', 'y', 'z'}) header += std::string("property double ") + axis + '\n';
    header += "property uchar red\nproperty uchar green\nproperty uchar blue\n";
    if (look.is_translucent) header += "property uchar alpha\n";
    header += "element face " + std::to_string(mesh.NTriangles()) +
              "\nproperty list uchar int vertex_indices\nend_header\n";
    return header;
}

}  // namespace

void write_ply(const Mesh& mesh, ProgressBar& progress, Output& output) {
    const Appearance look = mesh.Look();
    const Rgba colour = rgba_of(look);
    const std::size_t n_parts = look.is_translucent ? 4 : 3;
    output.Write(ply_header(mesh, look));
    walk_points(mesh, progress, [&](const Point& point) {
        Record<kPlyPoint> record;
        for (const double coordinate : {point.x, point.y, point.z}) record.Put(coordinate);
        for (std::size_t i = 0; i < n_parts; ++i) record.Put(colour[i]);
        record.WriteTo(output);
    });
    walk_triangles(mesh, progress, [&](const MeshTriangle& triangle) {
        Record<kPlyFace> record;
        constexpr unsigned char kCorners = 3;
        record.Put(kCorners);
        for (const int corner : triangle) record.Put(corner);
        record.WriteTo(output);
    });
}

void write_stl(const Mesh& mesh, ProgressBar& progress, Output& output) {
    const Rgba colour = rgba_of(mesh.Look());
    // Must not begin with "solid", as the text form does.
    std::string header = "binary STL COLOR=";
    header.append(colour.begin(), colour.end());
    header.resize(kStlHeader, ' ');
    output.Write(header);
    Record<sizeof(std::int32_t)> count;
    count.Put(mesh.NTriangles());
    count.WriteTo(output);
    walk_corners(mesh, progress, [&](const std::array<Point, 3>& corners) {
        Record<kStlFacet> record;
        for (const float part : unit_normal(corners)) record.Put(part);
        for (const Point& corner : corners) {
            for (const double coordinate : {corner.x, corner.y, corner.z}) {
                record.Put(static_cast<float>(coordinate));
            }
        }
        // Two bytes that are 0: no colour of the facet's own.
        record.Skip(2);
        record.WriteTo(output);
    });
}

FloatRounding float_rounding(const Mesh& mesh, ProgressBar& progress) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::array<double, 3> lower{kInfinity, kInfinity, kInfinity};
    std::array<double, 3> upper{-kInfinity, -kInfinity, -kInfinity};
    FloatRounding rounding;
    walk_points(mesh, progress, [&](const Point& point) {
        const std::array<double, 3> coordinates{point.x, point.y, point.z};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const double coordinate = coordinates[axis];
            lower[axis] = std::min(lower[axis], coordinate);
            upper[axis] = std::max(upper[axis], coordinate);
            const bool fits = std::fabs(coordinate) <= std::numeric_limits<float>::max();
            const double moved =
                fits ? std::fabs(coordinate - double{static_cast<float>(coordinate)}) : kInfinity;
            rounding.farthest = std::max(rounding.farthest, moved);
        }
    });
    for (std::size_t axis = 0; axis < 3; ++axis) {
        rounding.size = std::max(rounding.size, upper[axis] - lower[axis]);
    }
    return rounding;
}

}  // namespace zol::tool
