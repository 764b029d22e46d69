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
#include "engine/block/sidecar_file.h"
#include "engine/formats/json.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

namespace {

using geometry::Coord3D;

constexpr std::int64_t kMostBlocks = 4294967294;
constexpr std::size_t kElementsListed = 20;
constexpr std::size_t kLongestNameListed = 80;

std::string element_list(const std::vector<Omf1Element>& elements) {
    if (elements.empty()) return "it has no elements";
    std::string text = "its elements are";
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (i == kElementsListed) {
            return text + " and " + std::to_string(elements.size() - i) + " more";
        }
        text += (i == 0 ? " \"" : ", \"") + elements[i].name.substr(0, kLongestNameListed) +
                "\" (" + elements[i].class_name + ")";
    }
    return text;
}

const Omf1Element& choose_volume(const std::vector<Omf1Element>& elements,
                                 const std::string& name) {
    for (const Omf1Element& element : elements) {
        if (element.class_name == "VolumeElement" && (name.empty() || element.name == name)) {
            return element;
        }
    }
    const std::string wanted = name.empty() ? "no volume" : "no volume \"" + name + "\"";
    throw ReadError("the file has " + wanted + "; " + element_list(elements));
}

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

std::array<double, 3> vector_of(const JsonValue& object, std::string_view key,
                                const std::array<double, 3>& otherwise) {
    const std::optional<JsonValue> value = object.Find(key);
    if (!value) return otherwise;
    const std::vector<double> numbers = value->Numbers(3);
    for (const double number : numbers) {
        if (!std::isfinite(number)) value->Refuse("is not finite");
    }
    return {numbers[0], numbers[1], numbers[2]};
}

std::vector<double> widths_of(const JsonValue& geometry, std::string_view key) {
    const JsonValue list = geometry.Get(key);
    std::vector<double> widths = list.Numbers();
    if (widths.empty()) list.Refuse("is empty");
    if (widths.size() > std::numeric_limits<std::int32_t>::max()) {
        list.Refuse("has more than 2147483647 cells");
    }
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (!(widths[i] > 0.0) || !std::isfinite(widths[i])) {
            list.At(i).Refuse("is no width of a cell");
        }
    }
    return widths;
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
    const std::array<double, 3> u = vector_of(geometry, "axis_u", {1, 0, 0});
    const std::array<double, 3> v = vector_of(geometry, "axis_v", {0, 1, 0});
    const std::array<double, 3> w = vector_of(geometry, "axis_w", {0, 0, 1});
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
    const Omf1Element& volume = choose_volume(elements, element_name);
    const JsonValue geometry =
        document.Follow(volume.object.Get("geometry"), {"VolumeGridGeometry"});

    Rotation rotation = rotation_of(geometry);
    const bool w_turned = is_left_handed(rotation);
    const auto [x, y, z] = axes_of(geometry, w_turned);
    CellOrder order = stated_order(*file);

    const std::array<double, 3> project = vector_of(document.Project(), "origin", {0, 0, 0});
    std::array<double, 3> origin = vector_of(geometry, "origin", {0, 0, 0});
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
