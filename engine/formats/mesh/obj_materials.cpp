#include "engine/formats/mesh/obj_materials.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <unordered_set>

#include "engine/formats/diagnostics.h"
#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/mtl_file.h"
#include "engine/formats/mesh/name_beside.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

// Far beyond real files; what names more is not worth the memory.
constexpr std::size_t kMostMaterials = 65536;
constexpr int kMostOffered = 1000;
constexpr std::size_t kMostLibraries = 64;
constexpr std::uint64_t kMostBytesOfLibraries = std::uint64_t{1} << 26;
constexpr std::size_t kMostBytesOfName = 4096;

// Finds the material in a library, a look that the library says nothing of being none. Takes
// the size of the library off `bytes_left`.
bool is_in_library(const std::string& path, const std::string& name, std::uint64_t& bytes_left,
                   MeshLook& look) {
    try {
        const File file(path);
        if (file.Size() > bytes_left) throw ReadError("the libraries of materials are too large");
        bytes_left -= file.Size();
        return read_material(file, name, look);
    } catch (const ReadError& error) {
        report(path, error.what());
        return false;
    }
}

}  // namespace

void ObjMaterials::AddLibraries(std::string_view names) {
    names = without_comment(names);
    // One more is held, to be told of.
    if (names.empty() || libraries_.size() > kMostLibraries || names.size() > kMostBytesOfName ||
        std::find(libraries_.begin(), libraries_.end(), names) != libraries_.end()) {
        return;
    }
    libraries_.emplace_back(names);
}

void ObjMaterials::Use(std::string_view name) {
    name = without_blanks(name);
    current_ = 0;
    if (name.empty()) return;
    const auto known = by_name_.find(std::string(name));
    if (known != by_name_.end()) {
        current_ = known->second;
        return;
    }
    if (materials_.size() > kMostMaterials || name.size() > kMostBytesOfName) {
        is_cut_ = true;
        return;
    }
    current_ = materials_.size();
    by_name_.emplace(name, current_);
    materials_.push_back({std::string(name)});
}

std::vector<std::string> ObjMaterials::LibraryPaths(const std::string& obj) const {
    std::vector<std::string> paths;
    // Paths, and names that have none.
    std::unordered_set<std::string> known;
    const auto take = [&](const std::optional<std::string>& path, std::string_view name) {
        if (!known.insert(path.value_or(std::string(name))).second) return true;
        if (known.size() > kMostLibraries) {
            report(obj, "it names more libraries of materials than are looked at");
            return false;
        }
        if (path) {
            paths.push_back(*path);
        } else {
            report(obj, "the material library " + quoted(name) +
                            " is not looked for, since it is not in the folder");
        }
        return true;
    };
    for (const std::string& library : libraries_) {
        // One name with blanks, or a list of names.
        if (const auto path = name_beside(obj, library); path && File::Exists(*path)) {
            if (!take(path, library)) return paths;
            continue;
        }
        std::string_view rest = library;
        for (std::string_view word = take_word(rest); !word.empty(); word = take_word(rest)) {
            if (!take(name_beside(obj, word), word)) return paths;
        }
    }
    return paths;
}

void ObjMaterials::FindLook(const std::string& obj, const std::string& name, MeshLook& look) const {
    const std::vector<std::string> paths = LibraryPaths(obj);
    // First the name as it stands, which may have a # in it, then without a comment.
    const std::string bare(without_comment(name));
    for (const std::string& wanted : bare == name ? std::vector{name} : std::vector{name, bare}) {
        std::uint64_t bytes_left = kMostBytesOfLibraries;
        for (const std::string& path : paths) {
            if (is_in_library(path, wanted, bytes_left, look)) return;
        }
    }
    report(obj, "the material " + quoted(name) + " is not found; the default look is used");
}

void ObjMaterials::Finish(const std::string& obj, MeshData& mesh) const {
    if (is_cut_) report(obj, "it names more materials than are looked at");
    std::size_t most = 0;
    int offered = 0;
    for (std::size_t i = 1; i < materials_.size(); ++i) {
        const Material& material = materials_[i];
        if (material.triangles == 0) continue;
        if (offered++ < kMostOffered) add_text("material", material.name, mesh);
        if (most == 0 || material.triangles > materials_[most].triangles) most = i;
    }
    if (most == 0) return;
    if (libraries_.empty()) {
        report(obj, "it uses materials and names no library of them");
        return;
    }
    FindLook(obj, materials_[most].name, mesh.look);
}

}  // namespace zol::engine
