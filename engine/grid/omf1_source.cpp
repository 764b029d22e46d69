#include "engine/grid/omf1_source.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "engine/formats/json.h"
#include "engine/formats/omf1_elements.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"

namespace zol::engine::grid {

namespace {

using Vector = std::array<double, 3>;

// Widths that differ by less than this part of themselves are equal, and so is an axis
// that leans by less.
constexpr double kRounding = 1e-9;

bool is_grid_surface(const Omf1Document& document, const Omf1Element& element) {
    return element.class_name == "SurfaceElement" &&
           Omf1Document::ClassOf(document.Follow(element.object.Get("geometry"),
                                                 {"SurfaceGeometry", "SurfaceGridGeometry"})) ==
               "SurfaceGridGeometry";
}

/// Nodes along an axis of the surface: one more than it has cells, which have one width.
struct Nodes {
    std::int32_t count = 1;
    double step = 0.0;
};

Nodes nodes_of(const JsonValue& geometry, std::string_view key) {
    const JsonValue list = geometry.Get(key);
    // One node more than cells, and both are counted in 32 bits.
    const std::vector<double> widths =
        read_widths(list, std::numeric_limits<std::int32_t>::max() - 1);
    double whole = 0.0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (std::fabs(widths[i] - widths[0]) > kRounding * widths[0]) {
            list.At(i).Refuse("differs from the first width: the nodes are not evenly apart");
        }
        whole += widths[i];
    }
    return {static_cast<std::int32_t>(widths.size() + 1),
            whole / static_cast<double>(widths.size())};
}

/// 1 or -1 for an axis that runs along a coordinate, up or down it; 0 for any other.
int direction(const Vector& axis, std::size_t coordinate) {
    for (std::size_t i = 0; i < axis.size(); ++i) {
        const double straight = i == coordinate ? 1.0 : 0.0;
        if (std::fabs(std::fabs(axis[i]) - straight) > kRounding) {
            return 0;
        }
    }
    return axis[coordinate] > 0.0 ? 1 : -1;
}

/// The heights of the surface's nodes, all read when the first is asked for.
class SurfaceNodes final : public NodeReader {
public:
    SurfaceNodes(std::shared_ptr<const File> file, Shape whole, double level, double upward,
                 std::optional<Omf1Blob> offsets)
        : file_(std::move(file)),
          whole_(whole),
          level_(level),
          upward_(upward),
          offsets_(std::move(offsets)) {}

    Shape Block() const override { return whole_; }
    bool IsNarrow() const override { return false; }

    void Read(Window& window) override {
        if (offsets_ && !heights_) {
            ReadHeights();
        }
        const Area& area = window.area;
        double* to = window.doubles;
        if (!heights_) {
            std::fill_n(to, area.Cells(), level_);
            return;
        }
        std::size_t cell = 0;
        for (std::int32_t row = area.row; row < area.row + area.rows; ++row) {
            const double* const from =
                heights_.get() +
                static_cast<std::size_t>(row) * static_cast<std::size_t>(whole_.columns) +
                static_cast<std::size_t>(area.column);
            for (std::int32_t i = 0; i < area.columns; ++i, ++cell) {
                to[cell] = from[i];
                if (!std::isfinite(from[i])) {
                    window.Flag(cell, kMasked);
                }
            }
        }
    }

private:
    void ReadHeights() {
        const std::size_t count =
            static_cast<std::size_t>(whole_.columns) * static_cast<std::size_t>(whole_.rows);
        auto heights = std::make_unique_for_overwrite<double[]>(count);
        inflate_exactly(*file_, *offsets_, heights.get(), count * sizeof(double));
        for (std::size_t i = 0; i < count; ++i) {
            heights[i] = level_ + upward_ * heights[i];
        }
        heights_ = std::move(heights);
    }

    std::shared_ptr<const File> file_;
    Shape whole_;
    double level_;
    double upward_;
    /// None when the surface is flat.
    std::optional<Omf1Blob> offsets_;
    std::unique_ptr<double[]> heights_;
};

std::optional<Omf1Blob> offsets_of(const Omf1Document& document, const JsonValue& geometry,
                                   std::int32_t columns, std::int32_t rows) {
    const std::optional<JsonValue> reference = geometry.Find("offset_w");
    if (!reference) {
        return std::nullopt;
    }
    Omf1Blob blob = document.Blob(*reference, {"ScalarArray"});
    if (blob.type != Omf1Blob::Type::Float64) {
        reference->Refuse("refers to whole numbers, not to heights");
    }
    // Two counts fit 62 bits; eight bytes each may not fit 64.
    const auto nodes = static_cast<std::uint64_t>(columns) * static_cast<std::uint64_t>(rows);
    if (nodes > std::numeric_limits<std::uint64_t>::max() / sizeof(double)) {
        geometry.Refuse("has more nodes than a file can hold");
    }
    check_can_hold(blob, nodes * sizeof(double));
    return blob;
}

}  // namespace

Source open_omf1(const std::shared_ptr<const File>& file, const std::string& element_name) {
    const Omf1Document document(*file);
    const std::vector<Omf1Element> elements = document.Elements();
    const Omf1Element& surface = choose_element(
        elements, element_name, "grid surface",
        [&](const Omf1Element& element) { return is_grid_surface(document, element); });
    const JsonValue geometry =
        document.Follow(surface.object.Get("geometry"), {"SurfaceGridGeometry"});

    const int along_x = direction(read_vector(geometry, "axis_u", {1, 0, 0}), 0);
    const int along_y = direction(read_vector(geometry, "axis_v", {0, 1, 0}), 1);
    if (along_x == 0 || along_y == 0) {
        geometry.Refuse(
            "is no level lattice: its axis_u does not run along x, or its axis_v not "
            "along y");
    }
    Vector origin = read_vector(geometry, "origin", {0, 0, 0});
    const Vector project = read_vector(document.Project(), "origin", {0, 0, 0});
    for (std::size_t i = 0; i < origin.size(); ++i) {
        origin[i] += project[i];
    }
    if (!std::isfinite(origin[2])) {
        geometry.Refuse("lies too far out for its project");
    }

    const Nodes u = nodes_of(geometry, "tensor_u");
    const Nodes v = nodes_of(geometry, "tensor_v");
    Source source;
    source.lattice.x = Axis::FromSteps(origin[0], 0.0, along_x * u.step, u.count);
    source.lattice.y = Axis::FromSteps(origin[1], 0.0, along_y * v.step, v.count);
    // Offsets are along u x v, which points down when one of the two is turned.
    source.nodes = std::make_unique<SurfaceNodes>(file, NodeReader::Shape{u.count, v.count},
                                                  origin[2], along_x * along_y,
                                                  offsets_of(document, geometry, u.count, v.count));
    return source;
}

}  // namespace zol::engine::grid
