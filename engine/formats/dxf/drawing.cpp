#include "engine/formats/dxf/drawing.h"

#include <array>

#include "engine/formats/dxf/drawing_data.h"
#include "engine/formats/dxf/flattening.h"
#include "engine/formats/number_text.h"

namespace zol::engine {

namespace {

constexpr Placing kInPlace;

const Placing& placing_of(const DrawingData& data, const DrawingRecord& record) {
    return record.placing == kNone ? kInPlace : data.placings[record.placing];
}

std::string name_of(const DrawingData& data, std::uint32_t name) {
    return name == kNone ? std::string() : data.names[name];
}

std::string hexadecimal(std::uint64_t number) {
    std::array<char, 16> digits{};
    std::size_t first = digits.size();
    for (; number != 0; number >>= 4U) digits[--first] = "0123456789ABCDEF"[number & 15U];
    return {digits.data() + first, digits.size() - first};
}

std::span<const StoredField> fields_of(const DrawingData& data, const DrawingRecord& record) {
    return data.fields.View().subspan(record.first_field, record.field_count);
}

// The text of one of the object's own fields, or null.
const StoredField* own_field(const DrawingData& data, const DrawingRecord& record,
                             std::uint32_t name) {
    for (const StoredField& field : fields_of(data, record)) {
        if (field.name == name) return &field;
    }
    return nullptr;
}

std::string own_text(const DrawingData& data, const DrawingRecord& record, std::uint32_t name,
                     std::string fallback) {
    const StoredField* const field = own_field(data, record, name);
    return field == nullptr ? std::move(fallback) : std::string(data.Letters(field->value));
}

SplineCurve spline_of(const DrawingData& data, const DrawingRecord& record,
                      std::span<const Vector3> points) {
    const DrawingCurve& curve = data.curves[record.detail];
    const std::span<const double> reals = data.reals.View().subspan(curve.first_real);
    SplineCurve spline{curve.degree, points, reals.first(curve.knot_count), {}};
    if (curve.has_weights) spline.weights = reals.subspan(curve.knot_count, points.size());
    return spline;
}

std::vector<DrawingPoint> points_in_place(const DrawingData& data, const DrawingRecord& record,
                                          std::span<const Vector3> points) {
    if (record.shape == Shape::Points) return flatten_bulges(points, {}, {}, false);
    const DrawingCurve& curve = data.curves[record.detail];
    const std::span<const double> reals = data.reals.View().subspan(curve.first_real);
    if (record.shape == Shape::Ellipse) {
        return flatten_ellipse(points[0], points[1], points[2], reals[0], reals[1],
                               record.is_closed);
    }
    if (record.shape == Shape::Spline) return flatten_spline(spline_of(data, record, points));
    const std::span<const std::uint8_t> marks = data.marks.View().subspan(curve.first_mark);
    return flatten_bulges(points, reals.first(curve.has_bulges ? points.size() : 0),
                          marks.first(curve.has_marks ? points.size() : 0), record.is_closed);
}

Vector3 first_place(const DrawingData& data, const DrawingRecord& record) {
    const Placing& placing = placing_of(data, record);
    switch (record.kind) {
        case DrawingKind::Polyline:
        case DrawingKind::Arrow:
            if (record.point_count == 0) return {0, 0, 0};
            return placing.Point(data.points[record.first_point]);
        case DrawingKind::Text:
        case DrawingKind::Text3D:
            return placing.Point(data.texts[record.detail].origin);
        default:
            return placing.Point(data.dimensions[record.detail].first);
    }
}

// A text keeps its letters upright in its plane: the map tells where its line and the line up
// from it go, and whether it is read against its direction then.
void place_text(const Placing& placing, DrawingText& text) {
    const Vector3 along = times(text.direction, text.is_mirrored ? -1 : 1);
    const Vector3 up = cross(text.normal, text.direction);
    const Vector3 placed_along = placing.Direction(along);
    const Vector3 placed_up = placing.Direction(up);
    const Vector3 old_normal = placing.Direction(text.normal);
    text.origin = placing.Point(text.origin);
    text.height *= length(placed_up);
    const double stretch = length(placed_up) > 0 ? length(placed_along) / length(placed_up) : 1;
    text.width *= stretch;
    Vector3 normal = unit(cross(placed_along, placed_up), unit(old_normal, kZAxis));
    if (dot(normal, old_normal) < 0) normal = times(normal, -1);
    text.normal = normal;
    // Along the text so that "up" lies to its left.
    const Vector3 direction = unit(placed_along, kXAxis);
    text.is_mirrored = dot(cross(normal, direction), placed_up) < 0;
    text.direction = text.is_mirrored ? times(direction, -1) : direction;
    text.rotation = degrees_of(text.direction);
}

// In the plan a text is told as seen from above.
void lay_in_plan(DrawingText& text) {
    if (text.normal[2] > 0) return;
    text.normal = times(text.normal, -1);
    text.direction = times(text.direction, -1);
    text.is_mirrored = !text.is_mirrored;
    text.rotation = degrees_of(text.direction);
}

std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines;
    for (;;) {
        const std::size_t end = text.find('\n');
        lines.emplace_back(text.substr(0, end));
        if (end == text.npos) return lines;
        text.remove_prefix(end + 1);
    }
}

}  // namespace

std::string folded(std::string_view text) {
    std::string small(text);
    for (char& c : small) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return small;
}

Drawing::Drawing(std::unique_ptr<const DrawingData> data) : data_(std::move(data)) {}
Drawing::Drawing(Drawing&&) noexcept = default;
Drawing& Drawing::operator=(Drawing&&) noexcept = default;
Drawing::~Drawing() = default;

std::span<const DrawingLayer> Drawing::Layers() const {
    return data_->layers;
}

std::optional<std::size_t> Drawing::FindLayer(std::string_view name) const {
    const auto found = data_->layer_of_folded_name.find(folded(name));
    if (found == data_->layer_of_folded_name.end()) return std::nullopt;
    return found->second;
}

std::span<const std::uint32_t> Drawing::ObjectsOf(std::size_t layer) const {
    const std::uint32_t first = data_->first_of_layer[layer];
    return std::span(data_->objects_by_layer)
        .subspan(first, data_->first_of_layer[layer + 1] - first);
}

std::size_t Drawing::ObjectCount() const {
    return data_->objects.Size();
}

std::span<const std::uint32_t> Drawing::TrueColours() const {
    return data_->true_colours;
}

std::span<const DrawingSkip> Drawing::Skipped() const {
    return data_->skipped;
}

DrawingKind Drawing::Kind(std::size_t object) const {
    return data_->objects[object].kind;
}

DrawingTraits Drawing::Traits(std::size_t object) const {
    const DrawingData& data = *data_;
    const DrawingRecord& record = data.objects[object];
    DrawingTraits traits;
    traits.kind = record.kind;
    traits.primitive = kPrimitives[record.primitive];
    traits.handle = record.handle;
    traits.layer = record.layer;
    traits.colour = record.colour;
    if (record.true_colour != kNone) traits.true_colour = record.true_colour;
    traits.line_type = record.line_type;
    traits.line_weight = record.line_weight;
    traits.is_visible = record.is_visible;
    traits.name = own_text(data, record, kFieldName, hexadecimal(record.handle));
    traits.group = own_text(data, record, kFieldGroup, {});
    traits.feature = own_text(data, record, kFieldFeature, name_of(data, record.block));
    traits.description = own_text(data, record, kFieldDescription, {});
    const std::string value = own_text(data, record, kFieldValue, {});
    if (!parse_number(value, traits.value)) traits.value = first_place(data, record)[2];
    return traits;
}

std::vector<DrawingField> Drawing::Fields(std::size_t object) const {
    std::vector<DrawingField> fields;
    for (const StoredField& field : fields_of(*data_, data_->objects[object])) {
        if (field.name < std::size(kOwnFields)) continue;
        fields.push_back({data_->names[field.name], std::string(data_->Letters(field.value))});
    }
    return fields;
}

DrawingPolyline Drawing::Polyline(std::size_t object) const {
    const DrawingRecord& record = data_->objects[object];
    DrawingPolyline polyline;
    polyline.points = points_in_place(
        *data_, record, data_->points.View().subspan(record.first_point, record.point_count));
    polyline.is_closed = record.is_closed;
    if (record.shape == Shape::Spline && record.is_closed && polyline.points.size() > 1 &&
        polyline.points.front().place == polyline.points.back().place) {
        polyline.points.pop_back();
    }
    for (const DrawingPoint& point : polyline.points) {
        if (point.mark == PointMark::Flattened) polyline.is_curved = true;
    }
    if (record.placing == kNone) return polyline;
    const Placing& placing = data_->placings[record.placing];
    const double turns = placing.KeepsTurns() ? 1 : -1;
    for (DrawingPoint& point : polyline.points) {
        point.place = placing.Point(point.place);
        if (point.bulge != 0) point.bulge *= turns;
    }
    return polyline;
}

DrawingText Drawing::Text(std::size_t object) const {
    const DrawingRecord& record = data_->objects[object];
    const StoredText& stored = data_->texts[record.detail];
    DrawingText text;
    text.lines = lines_of(data_->Letters(stored.lines));
    text.origin = stored.origin;
    text.direction = stored.direction;
    text.normal = stored.normal;
    text.rotation = stored.rotation;
    text.height = stored.height;
    text.width = stored.width;
    text.is_mirrored = stored.is_mirrored;
    text.across = stored.across;
    text.up = stored.up;
    text.style = name_of(*data_, stored.style);
    text.font = name_of(*data_, stored.font);
    if (record.placing != kNone) place_text(data_->placings[record.placing], text);
    if (record.kind == DrawingKind::Text) lay_in_plan(text);
    return text;
}

DrawingArrow Drawing::Arrow(std::size_t object) const {
    const DrawingRecord& record = data_->objects[object];
    const StoredArrow& stored = data_->arrows[record.detail];
    const Placing& placing = placing_of(*data_, record);
    DrawingArrow arrow;
    for (std::uint32_t i = 0; i < record.point_count; ++i) {
        arrow.points.push_back(placing.Point(data_->points[record.first_point + i]));
    }
    arrow.normal = unit(placing.Direction(stored.normal), kZAxis);
    arrow.has_head = stored.has_head;
    arrow.is_curved = stored.is_curved;
    arrow.annotation = stored.annotation;
    arrow.hook = stored.hook;
    arrow.head_length = stored.head_length;
    arrow.scale = stored.scale;
    return arrow;
}

DrawingDimension Drawing::Dimension(std::size_t object) const {
    const DrawingRecord& record = data_->objects[object];
    DrawingDimension dimension = data_->dimensions[record.detail];
    if (record.placing == kNone) return dimension;
    const Placing& placing = data_->placings[record.placing];
    const bool has_normal =
        record.kind == DrawingKind::DimensionLine || record.kind == DrawingKind::DimensionRadius;
    dimension.first = placing.Point(dimension.first);
    dimension.second = placing.Point(dimension.second);
    dimension.third = has_normal ? unit(placing.Direction(dimension.third), kZAxis)
                                 : placing.Point(dimension.third);
    dimension.text_middle = placing.Point(dimension.text_middle);
    // Counter-clockwise from above is from the other end after mirroring.
    if (!has_normal && !placing.KeepsTurns()) std::swap(dimension.second, dimension.third);
    return dimension;
}

}  // namespace zol::engine
