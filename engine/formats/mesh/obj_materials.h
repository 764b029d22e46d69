// The materials of an OBJ file: which libraries it names, and how many triangles each
// material has.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

class ObjMaterials {
public:
    /// Takes what stands behind mtllib.
    void AddLibraries(std::string_view names);
    /// Takes what stands behind usemtl.
    void Use(std::string_view name);
    /// Counts triangles of the material used last.
    void Count(std::size_t triangles) { materials_[current_].triangles += triangles; }

    /// Gives the mesh the look of the material of most triangles (the first of equals), and
    /// an attribute "material" for each that has any. `obj` is the path of the file. What can't
    /// be found is no failure, but a word on the diagnostics channel.
    void Finish(const std::string& obj, MeshData& mesh) const;

private:
    struct Material {
        std::string name;
        std::size_t triangles = 0;
    };

    // Of the libraries that are in the folder, each once.
    std::vector<std::string> LibraryPaths(const std::string& obj) const;
    void FindLook(const std::string& obj, const std::string& name, MeshLook& look) const;

    // The first stands for no material.
    std::vector<Material> materials_{1};
    std::size_t current_ = 0;
    std::unordered_map<std::string, std::size_t> by_name_;
    bool is_cut_ = false;
    std::vector<std::string> libraries_;
};

}  // namespace zol::engine
