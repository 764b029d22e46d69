#include "engine/formats/mesh/obj_file.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/diagnostics.h"
#include "engine/formats/line_numbers.h"
#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/mesh/obj_keywords.h"
#include "engine/formats/mesh/obj_lines.h"
#include "engine/formats/mesh/obj_materials.h"
#include "engine/formats/mesh/polygon.h"
#include "engine/formats/read_error.h"
#include "engine/formats/text_lines.h"

namespace zol::engine {

namespace {

constexpr int kMostComments = 100;

// Elements of one kind, which faces name by their number from 1, or from -1 backwards.
struct Elements {
    const char* name;
    std::int64_t count = 0;
    // The greatest number that was named before its element came, and where.
    std::int64_t awaited = 0;
    std::uint64_t awaiting_line = 0;
};

// A polygon that came before one of its points.
struct PutOffPolygon {
    std::size_t first_triangle;
    std::size_t corners;
    std::uint64_t line;
};

class ObjReader {
public:
    explicit ObjReader(const File& file) : file_(file), lines_(file) {}

    MeshData Read() {
        std::string_view line;
        while (lines_.Next(line)) {
            if (line.size() > 2 && line[1] == ' ' && line[0] == 'v') {
                ReadPoint(line.substr(2));
            } else if (line.size() > 2 && line[1] == ' ' && line[0] == 'f') {
                ReadFace(line.substr(2));
            } else {
                ReadOther(line);
            }
        }
        Finish();
        return std::move(mesh_);
    }

private:
    [[gnu::always_inline]] void ReadPoint(std::string_view rest) {
        MeshPoint point;
        if (take_real(rest, point[0]) != Taken::Number ||
            take_real(rest, point[1]) != Taken::Number ||
            take_real(rest, point[2]) != Taken::Number) {
            RefusePoint(rest);
        }
        if (!rest.empty()) ReadBehindPoint(rest, point);
        if (!are_coordinates(point)) lines_.Refuse(kNoCoordinates);
        if (mesh_.points.Size() >= kMostMeshElements) lines_.Refuse("there are too many points");
        mesh_.points.Add(point);
        ++points_.count;
    }

    // A weight, or a colour: three numbers or four.
    void ReadBehindPoint(std::string_view rest, MeshPoint& point) {
        RefuseNul(rest);
        double first = 0;
        double number = 0;
        int count = 0;
        Taken taken;
        while ((taken = take_real(rest, number)) == Taken::Number) {
            if (count++ == 0) first = number;
        }
        if (taken == Taken::Rubbish) RefusePoint(rest);
        has_colours_ = has_colours_ || count >= 3;
        if (count == 1 && first != 0 && first != 1) {
            for (double& coordinate : point) coordinate /= first;
        }
    }

    [[noreturn]] void RefusePoint(std::string_view rest) {
        const std::string_view word = take_word(rest);
        lines_.Refuse(word.empty() ? "a vertex has less than three coordinates"
                                   : quoted(word) + " is no number");
    }

    [[gnu::always_inline]] void ReadFace(std::string_view rest) {
        using namespace line_numbers;
        const char* const end = rest.data() + rest.size();
        corners_.clear();
        const char* at = behind_blanks(rest.data(), end);
        for (; at != end && *at != '#'; at = behind_blanks(at, end)) {
            const char* const corner = at;
            corners_.push_back(static_cast<std::int32_t>(TakeIndex(at, corner, end, points_)));
            // Either may be left out, with its slash or without.
            if (*at == '/') {
                ++at;
                if (*at != '/' && !is_word_end(at, end)) TakeIndex(at, corner, end, textures_);
                if (*at == '/' && !is_word_end(++at, end)) TakeIndex(at, corner, end, normals_);
            }
            if (!is_word_end(at, end)) RefuseCorner(corner, end);
        }
        if (at != end) RefuseNul(from(at, end));
        AddFace();
    }

    // The number at `at` of a corner as an index from 0, and passes it.
    [[gnu::always_inline]] std::int64_t TakeIndex(const char*& at, const char* corner,
                                                  const char* end, Elements& elements) {
        constexpr std::ptrdiff_t kMostDigits = 18;
        const bool is_backwards = *at == '-';
        at += is_backwards || *at == '+' ? 1 : 0;
        const char* const first = at;
        std::uint64_t digits = 0;
        for (; line_numbers::digit(at) < 10; ++at) digits = digits * 10 + line_numbers::digit(at);
        if (at == first || at - first > kMostDigits) RefuseCorner(corner, end);
        const auto number = static_cast<std::int64_t>(digits);
        if (number > 0 && number <= elements.count) {
            return is_backwards ? elements.count - number : number - 1;
        }
        return IndexAhead(number, is_backwards, elements);
    }

    // A number from 1 may name what comes later in the file.
    std::int64_t IndexAhead(std::int64_t number, bool is_backwards, Elements& elements) {
        const std::string what = std::string(elements.name) + " ";
        if (number == 0) lines_.Refuse("a face names " + what + "0; they are counted from 1");
        if (is_backwards) {
            lines_.Refuse("a face names " + what + "-" + std::to_string(number) + "; there are " +
                          std::to_string(elements.count) + " so far");
        }
        if (number > static_cast<std::int64_t>(kMostMeshElements)) {
            lines_.Refuse("a face names " + what + std::to_string(number));
        }
        if (number > elements.awaited) {
            elements.awaited = number;
            elements.awaiting_line = lines_.Number();
        }
        return number - 1;
    }

    [[noreturn]] void RefuseCorner(const char* corner, const char* end) {
        std::string_view rest = line_numbers::from(corner, end);
        lines_.Refuse(quoted(take_word(rest)) + " is no corner of a face");
    }

    [[gnu::always_inline]] void AddFace() {
        ++faces_;
        parts_ += begins_part_ ? 1 : 0;
        begins_part_ = false;
        if (corners_.size() == 3) [[likely]] {
            mesh_.triangles.Add({corners_[0], corners_[1], corners_[2]});
            materials_.Count(1);
        } else {
            AddPolygon();
        }
        if (mesh_.triangles.Size() > kMostMeshElements) {
            lines_.Refuse("there are too many triangles");
        }
    }

    void AddPolygon() {
        if (corners_.size() < 3) {
            lines_.Refuse("a face has " + std::to_string(corners_.size()) +
                          " corners; three are the least");
        }
        const std::int32_t last = *std::max_element(corners_.begin(), corners_.end());
        if (last < points_.count) {
            Part(lines_.Number(), mesh_.triangles);
        } else {
            PutOff();
        }
        materials_.Count(corners_.size() - 2);
    }

    // Appends the triangles of corners_.
    void Part(std::uint64_t line, GrowingArray<MeshTriangle>& triangles) {
        switch (parter_.Part(corners_, mesh_.points, triangles)) {
            case PolygonParter::Outcome::Parted:
                break;
            case PolygonParter::Outcome::Crossing:
                crossing_line_ = crossing_++ == 0 ? line : std::min(crossing_line_, line);
                break;
            case PolygonParter::Outcome::TooInvolved:
                throw ReadError("line " + std::to_string(line) +
                                ": a face is too involved to be parted into triangles");
        }
    }

    // A polygon can't be parted before its points are there. Its triangles take their place in
    // the list all the same, and hold its corners until then, for which they have room.
    void PutOff() {
        const std::size_t first = mesh_.triangles.Size();
        put_off_.push_back({first, corners_.size(), lines_.Number()});
        for (std::size_t i = 2; i < corners_.size(); ++i) mesh_.triangles.Add({});
        for (std::size_t i = 0; i < corners_.size(); ++i) {
            mesh_.triangles[first + i / 3][i % 3] = corners_[i];
        }
    }

    void PartThosePutOff() {
        GrowingArray<MeshTriangle> parts;
        for (const auto& [first, corners, line] : put_off_) {
            corners_.clear();
            for (std::size_t i = 0; i < corners; ++i) {
                corners_.push_back(mesh_.triangles[first + i / 3][i % 3]);
            }
            parts.SetSize(0);
            Part(line, parts);
            std::copy(parts.View().begin(), parts.View().end(),
                      mesh_.triangles.View().begin() + static_cast<std::ptrdiff_t>(first));
        }
    }

    void RefuseNul(std::string_view text) const {
        if (text.find('\0') != text.npos) {
            lines_.Refuse("it holds a NUL byte, so the file is no OBJ text");
        }
    }

    void ReadOther(std::string_view line) {
        std::string_view rest = line;
        const std::string_view keyword = take_word(rest);
        if (keyword.empty()) return;
        RefuseNul(line);
        if (keyword.front() == '#') {
            ReadComment(line);
            return;
        }
        is_in_head_ = false;
        ++statements_;
        if (keyword == "v") {
            ReadPoint(rest);
        } else if (keyword == "f") {
            ReadFace(rest);
        } else if (keyword == "vt") {
            ++textures_.count;
        } else if (keyword == "vn") {
            ++normals_.count;
        } else if (keyword == "usemtl") {
            materials_.Use(rest);
        } else if (keyword == "mtllib") {
            materials_.AddLibraries(rest);
        } else if (keyword == "o" || keyword == "g") {
            begins_part_ = true;
            if (keyword == "o" && name_.empty()) name_ = without_comment(rest);
        } else if (!is_passed_obj_keyword(keyword) && unknown_++ == 0) {
            unknown_line_ = lines_.Number();
            unknown_word_ = quoted(keyword);
        }
    }

    void ReadComment(std::string_view line) {
        if (!is_in_head_ || mesh_.points.Size() > 0 || comments_ >= kMostComments) return;
        const std::size_t begin = line.find_first_not_of("# \t");
        if (begin == line.npos) return;
        add_text("comment", without_blanks(line.substr(begin)), mesh_);
        ++comments_;
    }

    void Finish() {
        if (mesh_.points.IsEmpty() && faces_ == 0 && unknown_ > 0 && unknown_ == statements_) {
            throw ReadError("it is no OBJ file: none of its lines begins with a word of OBJ");
        }
        if (mesh_.points.IsEmpty()) throw ReadError("it has no points");
        for (const Elements& elements : {points_, textures_, normals_}) {
            if (elements.awaited <= elements.count) continue;
            throw ReadError("line " + std::to_string(elements.awaiting_line) + ": a face names " +
                            elements.name + " " + std::to_string(elements.awaited) +
                            "; there are " + std::to_string(elements.count));
        }
        PartThosePutOff();
        if (unknown_ > 0) {
            report(file_.Path(), "lines whose first word is none of OBJ: " +
                                     std::to_string(unknown_) + ", the first " + unknown_word_ +
                                     " in line " + std::to_string(unknown_line_));
        }
        if (crossing_ > 0) {
            report(file_.Path(), "faces that cross themselves: " + std::to_string(crossing_) +
                                     ", the first in line " + std::to_string(crossing_line_));
        }
        mesh_.points.Trim();
        mesh_.triangles.Trim();
        if (has_colours_) mesh_.attributes.push_back({"vertex_colours", true});
        add_text("name", name_, mesh_);
        materials_.Finish(file_.Path(), mesh_);
        add_source({.format = "OBJ",
                    .parts = parts_,
                    .points = points_.count,
                    .faces = faces_,
                    .has_polygons = true},
                   mesh_);
    }

    const File& file_;
    ObjLines lines_;
    MeshData mesh_;
    Elements points_{"vertex"};
    Elements textures_{"texture vertex"};
    Elements normals_{"normal"};
    std::vector<std::int32_t> corners_;
    PolygonParter parter_;
    ObjMaterials materials_;
    std::vector<PutOffPolygon> put_off_;
    std::string name_;
    std::int64_t faces_ = 0;
    std::int64_t parts_ = 0;
    std::uint64_t crossing_ = 0;
    std::uint64_t crossing_line_ = 0;
    std::uint64_t statements_ = 0;
    std::uint64_t unknown_ = 0;
    std::uint64_t unknown_line_ = 0;
    std::string unknown_word_;
    int comments_ = 0;
    bool begins_part_ = true;
    bool is_in_head_ = true;
    bool has_colours_ = false;
};

}  // namespace

MeshData read_obj(const File& file) {
    return ObjReader(file).Read();
}

}  // namespace zol::engine
