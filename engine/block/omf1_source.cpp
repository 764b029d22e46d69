#include "engine/block/omf1_source.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "engine/block/cell_order.h"
#include "engine/block/lattice.h"
#include "engine/block/omf1_variables.h"
#include "engine/formats/json.h"
#include "engine/formats/omf1_elements.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"
#include "engine/formats/sidecar_file.h"

namespace zol::engine::block {

namespace {

using geometry::Coord3D;

constexpr std::int64_t kMostBlocks = 4294967294;

CellOrder stated_order(const File& file) {
    const std::string path = file.Path() + ".json";
    if (!File::Exists(path)) return {};
    try {
        const JsonDocument document(read_sidecar_file(path), JsonDocument::Dialect::Strict);
        const std::optional<JsonValue> model = document.Root().Find("block:model");
        if (!model) return {};
        const std::optional<JsonValue> order = model->Find("order");
        return order ? read_cell_order(*order) : CellOrder{};
    } catch (const ReadError& error) {
        throw ReadError(path.substr(path.rfind('/') + 1) + ": " + error.what());
    }
}

std::vector<double> widths_of(const JsonValue& geometry, std::string_view key) {
    return read_widths(geometry.Get(key), std::numeric_limits<std::int32_t>::max());
}

std::array<Axis, 3> axes_of(const JsonValue& geometry, bool w_turned) {
    std::vector<double> w_widths = widths_of(geometry, "tensor_w");
    if (w_turned) std::reverse(w_widths.begin(), w_widths.end());
    std::array<Axis, 3> axes = {Axis::FromWidths(widths_of(geometry, "tensor_u")),
                                Axis::FromWidths(widths_of(geometry, "tensor_v")),
                                Axis::FromWidths(w_widths)};
    // Two counts fit 62 bits.
    const std::int64_t layer = axes[0].Count() * axes[1].Count();
    if (layer > kMostBlocks / axes[2].Count()) {
        geometry.Refuse("has more than " + std::to_string(kMostBlocks) + " cells");
    }
    return axes;
}

Rotation rotation_of(const JsonValue& geometry) {
    const std::array<double, 3> u = read_vector(geometry, "axis_u", {1, 0, 0});
    const std::array<double, 3> v = read_vector(geometry, "axis_v", {0, 1, 0});
    const std::array<double, 3> w = read_vector(geometry, "axis_w", {0, 0, 1});
    return {{{u[0], v[0], w[0]}, {u[1], v[1], w[1]}, {u[2], v[2], w[2]}}};
}

bool is_left_handed(const Rotation& r) {
    return (r[1][0] * r[2][1] - r[2][0] * r[1][1]) * r[0][2] +
               (r[2][0] * r[0][1] - r[0][0] * r[2][1]) * r[1][2] +
               (r[0][0] * r[1][1] - r[1][0] * r[0][1]) * r[2][2] <
           0.0;
}

}  // namespace

Source open_omf1(const std::shared_ptr<const File>& file, const std::string& element_name) {
    const Omf1Document document(*file);
    const std::vector<Omf1Element> elements = document.Elements();
    const Omf1Element& volume = choose_element(
        elements, element_name, "volume",
        [](const Omf1Element& element) { return element.class_name == "VolumeElement"; });
    const JsonValue geometry =
        document.Follow(volume.object.Get("geometry"), {"VolumeGridGeometry"});

    Rotation rotation = rotation_of(geometry);
    const bool w_turned = is_left_handed(rotation);
    const auto [x, y, z] = axes_of(geometry, w_turned);
    CellOrder order = stated_order(*file);

    const std::array<double, 3> project = read_vector(document.Project(), "origin", {0, 0, 0});
    std::array<double, 3> origin = read_vector(geometry, "origin", {0, 0, 0});
    for (std::size_t i = 0; i < 3; ++i) origin[i] += project[i];
    if (w_turned) {
        // No turn makes a left hand a right one: the model's z runs against w, from
        // the other end, and the file's cells go down it.
        for (std::size_t i = 0; i < 3; ++i) {
            origin[i] += z.Lower(z.Count()) * rotation[i][2];
            rotation[i][2] = -rotation[i][2];
        }
        order.turned[2] = !order.turned[2];
    }
    if (const char* fault = Placement::RotationFault(rotation)) {
        geometry.Refuse(std::string("has no axes of a model: ") + fault);
    }
    for (const double coordinate : origin) {
        if (!std::isfinite(coordinate)) geometry.Refuse("lies too far out for its project");
    }

    Source source;
    source.name = volume.name;
    source.placement = Placement::FromRotation(Coord3D(origin[0], origin[1], origin[2]), rotation);
    source.schemas.push_back(lattice_facts(x, y, z));
    source.extent = source.schemas.front().extent;
    source.geometry = std::make_unique<LatticeGeometry>(x, y, z, order);
    source.variables =
        read_omf1_variables(file, document, volume.object, source.geometry->NBlocks());
    return source;
}

}  // namespace zol::engine::block
