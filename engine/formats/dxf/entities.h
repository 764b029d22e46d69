// What becomes of each kind of entity.
#pragma once

#include "engine/formats/dxf/drawing_builder.h"
#include "engine/formats/dxf/entity.h"
#include "engine/formats/dxf/tag_reader.h"

namespace zol::engine {

/// Puts the shape of an entity into its record. False when it has none that can be told: no
/// points, or numbers that don't fit each other.
using MakeShape = bool (*)(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);

bool make_line(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
bool make_point(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
bool make_3d_face(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
/// SOLID and TRACE.
bool make_solid(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
bool make_arc(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
bool make_circle(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
bool make_ellipse(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
/// Needs its values listed.
bool make_spline(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
/// TEXT and ATTRIB.
bool make_text(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
bool make_multiline_text(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
/// Needs its values listed.
bool make_leader(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
bool make_dimension(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
bool make_arc_dimension(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder);
bool make_large_radial_dimension(const Entity& entity, DrawingRecord& record,
                                 DrawingBuilder& builder);

/// Vertices of a polyline with their bulges and marks, while it is read.
class VertexList {
public:
    explicit VertexList(DrawingBuilder& builder);
    VertexList(const VertexList&) = delete;
    VertexList& operator=(const VertexList&) = delete;

    std::size_t Size() const { return builder_.Data().points.Size() - first_; }
    void Add(const Vector3& place) { builder_.Data().points.Add(place); }
    Vector3& operator[](std::size_t i) { return builder_.Data().points[first_ + i]; }
    /// Of the last vertex.
    void SetBulge(double bulge);
    void SetMark(PointMark mark);
    /// False, and the vertices are gone, when there are none.
    bool Finish(DrawingRecord& record);
    void Drop() { builder_.Data().points.SetSize(first_); }

private:
    DrawingBuilder& builder_;
    std::size_t first_;
    std::vector<double> bulges_;
    std::vector<std::uint8_t> marks_;
};

/// These read their own tags, up to the next of code 0 that is none of theirs. With `record` null
/// they pass over them.
void read_light_polyline(TagReader& tags, Entity& entity, VertexList& vertices);
bool finish_light_polyline(const Entity& entity, VertexList& vertices, DrawingRecord& record,
                           DrawingBuilder& builder);
/// The vertices behind a POLYLINE; false for a mesh, whose vertices are passed over.
bool read_vertices(TagReader& tags, const Entity& polyline, VertexList& vertices);
bool finish_polyline(const Entity& polyline, VertexList& vertices, DrawingRecord& record,
                     DrawingBuilder& builder);

/// What a MULTILEADER shows.
struct MultileaderParts {
    /// From the head to where the text begins.
    std::vector<std::vector<Vector3>> lines;
    std::string raw_text;
    bool has_text = false;
    Vector3 place = {0, 0, 0};
    Vector3 direction = kXAxis;
    Vector3 normal = kZAxis;
    double text_height = 0;
    double arrow_length = 0;
    bool is_spline = false;
};

MultileaderParts read_multileader(TagReader& tags, Entity& entity);
bool make_multileader_line(const MultileaderParts& parts, std::size_t line, DrawingRecord& record,
                           DrawingBuilder& builder);
void make_multileader_text(const MultileaderParts& parts, DrawingRecord& record,
                           DrawingBuilder& builder);

}  // namespace zol::engine
