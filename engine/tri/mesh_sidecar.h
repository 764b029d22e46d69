// The JSON file beside a mesh that says what its format can't: `mine.stl.json` beside
// `mine.stl`. docs/formats/meshes.md has its keys.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/formats/json.h"
#include "engine/formats/mesh/mesh_data.h"
#include "engine/tri/property_library.h"

namespace zol::engine::tri {

/// Adds to what a mesh file says, or overrides it; nothing where there is no sidecar. Each
/// operation throws ReadError that names the sidecar and the JSON path of what is wrong.
class MeshSidecar {
public:
    /// `path` is that of the mesh.
    explicit MeshSidecar(const std::string& path);

    void Apply(MeshLook& look) const;
    /// Reads no more than kMostAttributes; further ones are a word on the diagnostics.
    void Apply(std::vector<TypedAttribute>& attributes) const;

private:
    std::string path_;
    std::optional<JsonDocument> document_;
};

}  // namespace zol::engine::tri
