// Reads any bytes as a drawing in DXF and walks it.
//
// With a fuzzing engine it is built as a target of its own; in the ordinary test run
// standalone.cpp replays the samples and changed copies of them.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "engine/formats/dxf/dxf_file.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_encoding.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::engine::Drawing;
using zol::engine::DrawingKind;
using zol::engine::Vector3;

// A changed insertion can make a million of the same.
constexpr std::size_t kMostObjects = 5000;

void require(bool is_true) {
    if (!is_true) std::abort();
}

bool is_finite(const Vector3& place) {
    return std::all_of(place.begin(), place.end(), [](double x) { return std::isfinite(x); });
}

void check_shape(const Drawing& drawing, std::size_t object) {
    switch (drawing.Kind(object)) {
        case DrawingKind::Polyline:
            for (const auto& point : drawing.Polyline(object).points) {
                require(is_finite(point.place) && std::isfinite(point.bulge));
            }
            return;
        case DrawingKind::Text:
        case DrawingKind::Text3D: {
            const auto text = drawing.Text(object);
            require(is_finite(text.origin) && is_finite(text.direction));
            for (const std::string& line : text.lines) require(zol::engine::is_utf8(line));
            return;
        }
        case DrawingKind::Arrow:
            for (const Vector3& point : drawing.Arrow(object).points) require(is_finite(point));
            return;
        default:
            require(zol::engine::is_utf8(drawing.Dimension(object).text));
    }
}

// What the reader promises of a drawing that it gives.
void check(const Drawing& drawing) {
    std::size_t objects = 0;
    for (std::size_t layer = 0; layer < drawing.Layers().size(); ++layer) {
        require(drawing.FindLayer(drawing.Layers()[layer].name) == layer);
        objects += drawing.ObjectsOf(layer).size();
    }
    require(objects == drawing.ObjectCount());
    for (std::size_t i = 0; i < std::min(objects, kMostObjects); ++i) {
        const auto traits = drawing.Traits(i);
        require(traits.layer < drawing.Layers().size());
        require(traits.colour >= 1 && traits.colour <= 255);
        for (const auto& field : drawing.Fields(i)) require(zol::engine::is_utf8(field.name));
        check_shape(drawing, i);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const zol::testing_support::TemporaryFile file(
        std::string_view(reinterpret_cast<const char*>(data), size));
    try {
        check(zol::engine::read_dxf(zol::engine::File(file.Path())));
    } catch (const zol::engine::ReadError&) {
        return 0;
    }
    return 0;
}
