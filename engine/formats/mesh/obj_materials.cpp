#include "engine/formats/mesh/obj_materials.h"

#include <algorithm>

#include "engine/formats/diagnostics.h"
#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/mtl_file.h"
#include "engine/formats/mesh/name_beside.h"
#include "engine/formats/mesh/text_lines.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

// Far beyond real files; what names more is not worth the memory.
constexpr std::size_t kMostMaterials = 65536;
constexpr int kMostOffered = 1000;
constexpr std::size_t kMostLibraries = 64;
constexpr std::size_t kMostBytesOfName = 4096;

// Names may hold a #, but what stands behind one may be a comment too.
std::string_view without_comment(std::string_view text) {
    const std::size_t comment = text.find(" #");
    return comment == text.npos ? text : without_blanks(text.substr(0, comment));
}

// Finds the material in a library, a look that the library says nothing of being none.
bool is_in_library(const std::string& path, const std::string& name, MeshLook& look) {
    try {
        const File file(path);
        return read_material(file, name, look) || read_material(file, without_comment(name), look);
    } catch (const ReadError& error) {
        report(path, error.what());
        return false;
    }
}

}  // namespace

void ObjMaterials::AddLibraries(std::string_view names) {
    names = without_blanks(names);
    if (names.empty() || libraries_.size() >= kMostLibraries || names.size() > kMostBytesOfName ||
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

void ObjMaterials::FindLook(const std::string& obj, const std::string& name, MeshLook& look) const {
    for (const std::string& library : libraries_) {
        // One name with blanks, or a list of names.
        const std::string_view usual = without_comment(library);
        std::vector<std::string> paths;
        if (const auto path = name_beside(obj, usual); path && File::Exists(*path)) {
            paths.push_back(*path);
        } else {
            std::string_view rest = usual;
            for (std::string_view word = take_word(rest); !word.empty(); word = take_word(rest)) {
                const auto part = name_beside(obj, word);
                if (part) {
                    paths.push_back(*part);
                } else {
                    report(obj, "the material library " + quoted(word) +
                                    " is not looked for, since it is not in the folder");
                }
            }
        }
        for (const std::string& path : paths) {
            if (is_in_library(path, name, look)) return;
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
