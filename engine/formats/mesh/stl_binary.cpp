// The binary form: records of a normal, three corners and 16 bits, all little-endian.
#include <algorithm>
#include <array>
#include <vector>

#include "engine/formats/byte_numbers.h"
#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/mesh/point_welder.h"
#include "engine/formats/mesh/stl_colours.h"
#include "engine/formats/mesh/stl_forms.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

constexpr std::size_t kFacetsOfBlock = 4096;
// Looked up together, so that their slots come from memory at the same time.
constexpr std::size_t kFacetsOfBatch = 32;
constexpr std::size_t kCornersAt = 12;
constexpr std::size_t kWordAt = 48;

struct Corner {
    MeshPoint point;
    std::uint32_t hash;
};

class Facets {
public:
    Facets(MeshData& mesh, std::uint64_t facets, StlColours& colours)
        : mesh_(mesh), colours_(colours), welder_(mesh.points, 3 * facets, facets / 2 + 2) {}

    /// Takes `count` records, at most a batch; the first is number `first` of the file.
    void Take(const std::byte* records, std::size_t count, std::uint64_t first) {
        for (std::size_t i = 0; i < count; ++i) {
            const std::byte* const record = records + i * kStlFacetSize;
            for (std::size_t c = 0; c < 3; ++c) {
                Corner& corner = corners_[3 * i + c];
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    const auto x = load_number<float>(
                        record + kCornersAt + (3 * c + axis) * sizeof(float), ByteOrder::Little);
                    // Adding 0 makes 0 of -0.
                    corner.point[axis] = static_cast<double>(x) + 0.0;
                }
                if (!are_coordinates(corner.point)) {
                    throw ReadError("facet " + std::to_string(first + i + 1) + " at byte " +
                                    std::to_string(kStlHeaderSize + (first + i) * kStlFacetSize) +
                                    ": " + kNoCoordinates);
                }
                corner.hash = welder_.HashOf(corner.point);
                welder_.Prefetch(corner.hash);
            }
            colours_.Add(load_number<std::uint16_t>(record + kWordAt, ByteOrder::Little));
        }
        for (std::size_t i = 0; i < count; ++i) {
            const Corner* const c = &corners_[3 * i];
            MeshTriangle triangle;
            for (std::size_t k = 0; k < 3; ++k) {
                triangle[k] = welder_.Number(c[k].point, c[k].hash);
            }
            mesh_.triangles.Add(triangle);
        }
    }

private:
    MeshData& mesh_;
    StlColours& colours_;
    PointWelder welder_;
    std::array<Corner, 3 * kFacetsOfBatch> corners_;
};

/// The text in front of the facets, when it is one.
std::string text_of(std::string_view header) {
    header = header.substr(0, header.find('\0'));
    const auto is_plain = [](char c) { return c >= ' ' && c <= '~'; };
    if (!std::all_of(header.begin(), header.end(), is_plain)) return {};
    return std::string(without_blanks(header));
}

}  // namespace

MeshData read_binary_stl(const File& file, std::uint64_t facets) {
    if (facets > kMostMeshElements) {
        throw ReadError("it has more than " + std::to_string(kMostMeshElements) + " facets");
    }
    std::array<char, 80> header{};
    file.ReadAt(0, header.data(), header.size());
    const std::string_view header_text(header.data(), header.size());
    StlColours colours(header_text);
    MeshData mesh;
    mesh.triangles.Reserve(facets);
    {
        Facets taken(mesh, facets, colours);
        std::vector<std::byte> block(kFacetsOfBlock * kStlFacetSize);
        for (std::uint64_t first = 0; first < facets;) {
            const std::size_t count =
                static_cast<std::size_t>(std::min<std::uint64_t>(kFacetsOfBlock, facets - first));
            const std::uint64_t at = kStlHeaderSize + first * kStlFacetSize;
            if (file.ReadAt(at, block.data(), count * kStlFacetSize) < count * kStlFacetSize) {
                throw ReadError("the file became shorter while it was read");
            }
            for (std::size_t i = 0; i < count; i += kFacetsOfBatch) {
                taken.Take(block.data() + i * kStlFacetSize, std::min(kFacetsOfBatch, count - i),
                           first + i);
            }
            first += count;
        }
    }
    mesh.points.Trim();
    colours.Tell(mesh.look);
    const auto count = static_cast<std::int64_t>(facets);
    add_source({.format = "STL binary", .points = 3 * count, .faces = count}, mesh);
    add_text("header", text_of(header_text), mesh);
    return mesh;
}

}  // namespace zol::engine
