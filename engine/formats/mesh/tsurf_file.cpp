#include "engine/formats/mesh/tsurf_file.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "engine/formats/line_numbers.h"
#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/mesh/point_ids.h"
#include "engine/formats/mesh/tsurf_header.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

class TsurfReader {
public:
    explicit TsurfReader(const File& file) : file_(file), lines_(file) {}

    MeshData Read() {
        std::string_view line;
        while (lines_.Next(line)) {
            const std::string_view keyword = take_word(line);
            if (keyword.empty() || keyword.front() == '#') continue;
            if (keyword != "GOCAD") {
                lines_.Refuse("\"GOCAD TSurf 1\" is expected instead of " + quoted(keyword));
            }
            const std::string_view kind = take_word(line);
            if (kind != "TSurf") {
                lines_.Refuse("the file holds a GOCAD object of the kind " + quoted(kind) +
                              ", not a TSurf");
            }
            ReadObject();
        }
        if (mesh_.points.IsEmpty()) throw ReadError("it has no points");
        mesh_.points.Trim();
        mesh_.triangles.Trim();
        add_source({.format = "GOCAD TSurf",
                    .parts = parts_,
                    .points = source_points_,
                    .faces = static_cast<std::int64_t>(mesh_.triangles.Size())},
                   mesh_);
        return std::move(mesh_);
    }

private:
    void ReadObject() {
        const std::uint64_t first_line = lines_.Number();
        TsurfHeader header(lines_, file_.Path(), mesh_);
        ids_.Clear();
        const std::size_t first_point = mesh_.points.Size();
        const std::size_t first_triangle = mesh_.triangles.Size();
        std::int64_t parts = 0;
        std::string_view line;
        while (lines_.Next(line)) {
            const std::string_view keyword = take_word(line);
            if (keyword == "TRGL") {
                ReadTriangle(line);
            } else if (keyword == "VRTX" || keyword == "PVRTX") {
                ReadPoint(line);
            } else if (keyword == "ATOM" || keyword == "PATOM") {
                ReadAtom(line);
            } else if (keyword == "TFACE") {
                ++parts;
            } else if (keyword == "GOCAD") {
                lines_.Refuse("an object begins before the one of line " +
                              std::to_string(first_line) + " has its END");
            } else if (keyword == "END") {
                parts_ += parts == 0 ? 1 : parts;
                EndObject(header, first_point, first_triangle);
                return;
            } else {
                header.Read(keyword, line);
            }
        }
        throw ReadError("the file ends before the END of the object of line " +
                        std::to_string(first_line));
    }

    void EndObject(const TsurfHeader& header, std::size_t first_point, std::size_t first_triangle) {
        const std::size_t triangles = mesh_.triangles.Size() - first_triangle;
        if (first_point == 0 || triangles > most_triangles_) {
            most_triangles_ = triangles;
            mesh_.look = header.Look();
        }
        if (!header.IsDepth()) return;
        // Taking from 0 makes no -0. A mirrored triangle turns the other way round.
        for (MeshPoint& point : mesh_.points.View().subspan(first_point)) point[2] = 0 - point[2];
        for (MeshTriangle& corners : mesh_.triangles.View().subspan(first_triangle)) {
            std::swap(corners[1], corners[2]);
        }
    }

    std::int64_t TakeId(std::string_view& rest) {
        std::int64_t id = 0;
        if (take_whole(rest, id) != Taken::Number) RefuseWord(rest, "the number of a point");
        return id;
    }

    [[noreturn]] void RefuseWord(std::string_view rest, const std::string& expected) {
        const std::string_view word = take_word(rest);
        lines_.Refuse(expected + " is expected" +
                      (word.empty() ? "" : " instead of " + quoted(word)));
    }

    void ReadPoint(std::string_view rest) {
        const std::int64_t id = TakeId(rest);
        MeshPoint point{};
        for (double& coordinate : point) {
            if (take_real(rest, coordinate) != Taken::Number) RefuseWord(rest, "a coordinate");
        }
        if (!are_coordinates(point)) lines_.Refuse(kNoCoordinates);
        if (mesh_.points.Size() >= kMostMeshElements) lines_.Refuse("there are too many points");
        AddId(id, static_cast<std::int32_t>(mesh_.points.Size()));
        mesh_.points.Add(point);
    }

    // Another number for a point that is there: so pieces of a surface share their border.
    void ReadAtom(std::string_view rest) {
        const std::int64_t id = TakeId(rest);
        AddId(id, Find(TakeId(rest)));
    }

    void ReadTriangle(std::string_view rest) {
        MeshTriangle corners{};
        for (std::int32_t& corner : corners) corner = Find(TakeId(rest));
        if (mesh_.triangles.Size() >= kMostMeshElements) {
            lines_.Refuse("there are too many triangles");
        }
        mesh_.triangles.Add(corners);
    }

    void AddId(std::int64_t id, std::int32_t point) {
        if (!ids_.Add(id, point)) {
            lines_.Refuse("there is a point " + std::to_string(id) + " already");
        }
        ++source_points_;
    }

    std::int32_t Find(std::int64_t id) {
        const auto point = ids_.Find(id);
        if (!point) lines_.Refuse("there is no point " + std::to_string(id) + " so far");
        return *point;
    }

    const File& file_;
    TextLines lines_;
    MeshData mesh_;
    PointIds ids_;
    std::size_t most_triangles_ = 0;
    std::int64_t parts_ = 0;
    std::int64_t source_points_ = 0;
};

}  // namespace

MeshData read_tsurf(const File& file) {
    return TsurfReader(file).Read();
}

}  // namespace zol::engine
