// The text form: solids of facets, each a loop of three vertices.
#include <string>
#include <vector>

#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/mesh/point_welder.h"
#include "engine/formats/mesh/stl_forms.h"
#include "engine/formats/mesh/words.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

// "vertex 0 0 0" and an end of the line.
constexpr std::uint64_t kLeastOfVertex = 13;
// Of the solids' names: callers take all attributes at once.
constexpr std::size_t kMostNames = 50;
constexpr std::size_t kLongestName = 1000;

class Solids {
public:
    Solids(const File& file, MeshData& mesh)
        : mesh_(mesh),
          lines_(file),
          words_(lines_),
          welder_(mesh.points, file.Size() / kLeastOfVertex + 3, 0) {}

    void Read() {
        bool inside = false;
        for (;;) {
            const std::string_view word = words_.Next();
            if (word.empty()) return;
            if (is_same_word(word, "solid")) {
                if (inside) words_.Refuse("a solid begins inside another");
                inside = true;
                TakeName(words_.RestOfLine());
            } else if (!inside) {
                words_.Refuse(quoted(word) + " stands where a solid should begin");
            } else if (is_same_word(word, "facet")) {
                ReadFacet();
            } else if (is_same_word(word, "endsolid")) {
                inside = false;
                words_.RestOfLine();
            } else {
                words_.Refuse(quoted(word) + " stands where a facet should begin");
            }
        }
    }

    void Tell() {
        const auto facets = static_cast<std::int64_t>(mesh_.triangles.Size());
        add_source({.format = "STL text", .parts = solids_, .points = 3 * facets, .faces = facets},
                   mesh_);
        if (names_.empty()) return;
        add_text("name", names_.front(), mesh_);
        if (solids_ == 1) return;
        for (const std::string& name : names_) add_text("solid", name, mesh_);
    }

private:
    void TakeName(std::string_view name) {
        ++solids_;
        if (!name.empty() && names_.size() < kMostNames) {
            names_.emplace_back(name.substr(0, kLongestName));
        }
    }

    std::string_view WordOfFacet() {
        const std::string_view word = words_.Next();
        if (word.empty()) words_.Refuse("the file ends inside a facet");
        return word;
    }

    void Expect(std::string_view expected) {
        const std::string_view word = WordOfFacet();
        if (is_same_word(word, expected)) return;
        if (is_same_word(word, "endloop")) words_.Refuse("the facet has less than 3 vertices");
        if (is_same_word(word, "vertex")) words_.Refuse("the facet has more than 3 vertices");
        words_.Refuse(quoted(word) + " stands where \"" + std::string(expected) + "\" is expected");
    }

    void ReadFacet() {
        // The corners say where the facet looks, and writers put anything for the normal.
        for (std::string_view word = WordOfFacet(); !is_same_word(word, "outer");) {
            word = WordOfFacet();
            if (is_same_word(word, "endfacet")) words_.Refuse("the facet has no loop");
        }
        Expect("loop");
        MeshTriangle triangle{};
        for (std::int32_t& corner : triangle) {
            Expect("vertex");
            corner = ReadVertex();
        }
        Expect("endloop");
        Expect("endfacet");
        if (mesh_.triangles.Size() >= kMostMeshElements) {
            words_.Refuse("it is one facet more than " + std::to_string(kMostMeshElements));
        }
        mesh_.triangles.Add(triangle);
    }

    std::int32_t ReadVertex() {
        MeshPoint point{};
        // Adding 0 makes 0 of -0.
        for (double& coordinate : point) coordinate = words_.Real() + 0.0;
        if (!are_coordinates(point)) words_.Refuse(kNoCoordinates);
        return welder_.Number(point, welder_.HashOf(point));
    }

    MeshData& mesh_;
    TextLines lines_;
    Words words_;
    PointWelder welder_;
    std::int64_t solids_ = 0;
    std::vector<std::string> names_;
};

}  // namespace

MeshData read_text_stl(const File& file) {
    MeshData mesh;
    Solids solids(file, mesh);
    solids.Read();
    mesh.points.Trim();
    mesh.triangles.Trim();
    solids.Tell();
    return mesh;
}

}  // namespace zol::engine
