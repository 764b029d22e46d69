// Reads any bytes as a mesh, whose format they tell themselves, and walks it.
//
// With a fuzzing engine it is built as a target of its own; in the ordinary test run
// standalone.cpp replays the samples and changed copies of them.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "engine/formats/mesh/mesh_file.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/read_error.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::engine::MeshData;

// What every reader promises of a mesh that it gives.
void check(const MeshData& mesh) {
    if (mesh.points.IsEmpty()) std::abort();
    for (const zol::engine::MeshPoint& point : mesh.points.View()) {
        if (!zol::engine::are_coordinates(point)) std::abort();
    }
    for (const zol::engine::MeshTriangle& triangle : mesh.triangles.View()) {
        for (const std::int32_t corner : triangle) {
            if (corner < 0 || static_cast<std::size_t>(corner) >= mesh.points.Size()) std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const zol::testing_support::TemporaryFile file(
        std::string_view(reinterpret_cast<const char*>(data), size));
    try {
        check(zol::engine::read_mesh(file.Path()));
    } catch (const zol::engine::ReadError&) {
        return 0;
    }
    return 0;
}
