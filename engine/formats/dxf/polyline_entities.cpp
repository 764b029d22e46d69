// LWPOLYLINE and POLYLINE: most of what a mine's drawing holds.
#include <algorithm>

#include "engine/formats/dxf/entities.h"

namespace zol::engine {

namespace {

// Bits of POLYLINE.
constexpr int kClosed = 1;
constexpr int kCurveFit = 2;
constexpr int k3D = 8;
constexpr int kMesh = 16;
constexpr int kPolyface = 64;
// Bits of VERTEX.
constexpr int kAddedByFit = 1;
constexpr int kAddedBySpline = 8;
constexpr int kFrame = 16;

}  // namespace

VertexList::VertexList(DrawingBuilder& builder)
    : builder_(builder), first_(builder.Data().points.Size()) {}

void VertexList::SetBulge(double bulge) {
    if (bulge == 0 || Size() == 0) return;
    bulges_.resize(Size(), 0);
    bulges_.back() = bulge;
}

void VertexList::SetMark(PointMark mark) {
    if (mark == PointMark::None || Size() == 0) return;
    marks_.resize(Size(), 0);
    marks_.back() = static_cast<std::uint8_t>(mark);
}

bool VertexList::Finish(DrawingRecord& record) {
    if (Size() == 0 || Size() >= kNone) {
        Drop();
        return false;
    }
    DrawingData& data = builder_.Data();
    record.first_point = first_;
    record.point_count = static_cast<std::uint32_t>(Size());
    if (bulges_.empty() && marks_.empty()) return true;
    DrawingCurve curve;
    curve.first_real = data.reals.Size();
    curve.first_mark = data.marks.Size();
    curve.has_bulges = !bulges_.empty();
    curve.has_marks = !marks_.empty();
    if (curve.has_bulges) bulges_.resize(Size(), 0);
    if (curve.has_marks) marks_.resize(Size(), 0);
    for (const double bulge : bulges_) data.reals.Add(bulge);
    for (const std::uint8_t mark : marks_) data.marks.Add(mark);
    record.shape = Shape::Bulges;
    record.detail = builder_.AddCurve(curve);
    return true;
}

void read_light_polyline(TagReader& tags, Entity& entity, VertexList& vertices) {
    while (tags.Next()) {
        switch (tags.Code()) {
            case 0:
                tags.PutBack();
                return;
            case 10:
                vertices.Add({tags.Real(), 0, 0});
                break;
            case 20:
                if (vertices.Size() > 0) vertices[vertices.Size() - 1][1] = tags.Real();
                break;
            case 42:
                vertices.SetBulge(tags.Real());
                break;
            case 40:
            case 41:
            case 91:
                break;
            default:
                entity.Take(tags);
        }
    }
}

bool finish_light_polyline(const Entity& entity, VertexList& vertices, DrawingRecord& record,
                           DrawingBuilder& builder) {
    const double elevation = entity.Real(38);
    if (elevation != 0) {
        for (std::size_t i = 0; i < vertices.Size(); ++i) vertices[i][2] = elevation;
    }
    record.is_closed = (entity.Whole(70) & kClosed) != 0;
    record.placing = builder.PlaneOf(entity.Normal());
    return vertices.Finish(record);
}

bool read_vertices(TagReader& tags, const Entity& polyline, VertexList& vertices) {
    const int flags = polyline.Whole(70);
    const bool is_mesh = (flags & (kMesh | kPolyface)) != 0;
    const double elevation = (flags & k3D) != 0 ? 0 : polyline.Real(30);
    while (tags.Next()) {
        if (!tags.Begins("VERTEX")) {
            const bool is_end = tags.Begins("SEQEND");
            if (!is_end) tags.PutBack();
            while (is_end && tags.Next()) {
                if (tags.Code() != 0) continue;
                tags.PutBack();
                break;
            }
            return !is_mesh;
        }
        Vector3 place = {0, 0, 0};
        double bulge = 0;
        int bits = 0;
        while (tags.Next()) {
            const int code = tags.Code();
            if (code == 0) {
                tags.PutBack();
                break;
            }
            if (code == 10 || code == 20 || code == 30) {
                place[static_cast<std::size_t>(code / 10 - 1)] = tags.Real();
            } else if (code == 42) {
                bulge = tags.Real();
            } else if (code == 70) {
                bits = static_cast<int>(std::clamp(tags.Real(), 0.0, 32767.0));
            }
        }
        if (is_mesh || (bits & kFrame) != 0) continue;
        // Some writers tell heights of vertices only, and not that there are any.
        if (place[2] == 0) place[2] = elevation;
        vertices.Add(place);
        vertices.SetBulge(bulge);
        if ((bits & (kAddedByFit | kAddedBySpline)) != 0) {
            vertices.SetMark(PointMark::Flattened);
        } else if ((flags & kCurveFit) != 0) {
            vertices.SetMark(PointMark::Control);
        }
    }
    return !is_mesh;
}

bool finish_polyline(const Entity& polyline, VertexList& vertices, DrawingRecord& record,
                     DrawingBuilder& builder) {
    const int flags = polyline.Whole(70);
    record.is_closed = (flags & kClosed) != 0;
    if ((flags & k3D) == 0) record.placing = builder.PlaneOf(polyline.Normal());
    return vertices.Finish(record);
}

}  // namespace zol::engine
