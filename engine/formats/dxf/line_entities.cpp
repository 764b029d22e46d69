// Entities of a few straight lines.
#include <array>

#include "engine/formats/dxf/entities.h"

namespace zol::engine {

namespace {

bool is_kept(const Entity& entity) {
    return entity.Has(10) && entity.Has(20);
}

}  // namespace

bool make_line(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    const std::array<Vector3, 2> ends = {entity.Point(10), entity.Point(11)};
    builder.SetPoints(ends, record);
    return is_kept(entity) && entity.Has(11) && entity.Has(21);
}

bool make_point(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    const std::array<Vector3, 1> place = {entity.Point(10)};
    builder.SetPoints(place, record);
    return is_kept(entity);
}

// A triangle has its third corner twice, or no fourth.
bool make_3d_face(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    const std::array<Vector3, 4> corners = {entity.Point(10), entity.Point(11), entity.Point(12),
                                            entity.Point(13)};
    const bool is_triangle = !entity.Has(13) || corners[2] == corners[3];
    builder.SetPoints(std::span(corners).first(is_triangle ? 3 : 4), record);
    record.is_closed = true;
    return is_kept(entity) && entity.Has(11) && entity.Has(12);
}

// Its corners are told in the order of the letter Z.
bool make_solid(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    const bool is_triangle = !entity.Has(13) || entity.Point(12) == entity.Point(13);
    const std::array<Vector3, 4> corners = {entity.Point(10), entity.Point(11),
                                            entity.Point(is_triangle ? 12 : 13), entity.Point(12)};
    builder.SetPoints(std::span(corners).first(is_triangle ? 3 : 4), record);
    record.placing = builder.PlaneOf(entity.Normal());
    record.is_closed = true;
    return is_kept(entity) && entity.Has(11) && entity.Has(12);
}

}  // namespace zol::engine
