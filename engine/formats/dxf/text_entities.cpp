// TEXT, ATTRIB and MTEXT.
#include <cmath>

#include "engine/formats/dxf/entities.h"
#include "engine/formats/dxf/text_codes.h"

namespace zol::engine {

namespace {

double from_0_to_360(double degrees) {
    const double left = std::fmod(degrees, 360.0);
    return left < 0 ? left + 360 : left;
}

bool is_vertical(const Vector3& normal) {
    return normal[0] == 0 && normal[1] == 0 && normal[2] != 0;
}

void set_style(std::string_view raw_name, StoredText& text, DrawingBuilder& builder) {
    const TextStyle style = builder.StyleOf(raw_name);
    text.style = builder.Name(style.name);
    text.font = style.font;
}

void set_text(const StoredText& text, DrawingKind kind, DrawingRecord& record,
              DrawingBuilder& builder) {
    record.kind = kind;
    record.detail = static_cast<std::uint32_t>(builder.Data().texts.Size());
    builder.Data().texts.Add(text);
}

// Code 72 of a line of text: left, centre, right, aligned, middle, fit.
constexpr TextAcross kAcross[] = {TextAcross::Left, TextAcross::Centre, TextAcross::Right,
                                  TextAcross::Left, TextAcross::Centre, TextAcross::Left};
constexpr TextUp kUp[] = {TextUp::Baseline, TextUp::Bottom, TextUp::Middle, TextUp::Top};
constexpr int kAligned = 3;
constexpr int kMiddle = 4;
constexpr int kFit = 5;

// Direction and flags of a line of text, in its own plane.
void set_direction(const Entity& entity, int across, StoredText& text) {
    const bool has_two_ends = (across == kAligned || across == kFit) && entity.Has(11);
    const Vector3 along = minus(entity.Point(11), entity.Point(10));
    text.rotation =
        has_two_ends && length(along) > 0 ? degrees_of(along) : from_0_to_360(entity.Real(50));
    constexpr int kBackward = 2;
    constexpr int kUpsideDown = 4;
    const int flags = entity.Whole(71);
    text.is_mirrored = (flags & kBackward) != 0;
    // Upside down is mirrored, and turned by half a turn.
    if ((flags & kUpsideDown) != 0) {
        text.is_mirrored = !text.is_mirrored;
        text.rotation = from_0_to_360(text.rotation + 180);
    }
    text.direction = turn(text.rotation).x;
}

}  // namespace

bool make_text(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    if (!entity.Has(10) || !entity.Has(20) || !entity.Has(1)) return false;
    // An ATTRIB says by code 74 what a TEXT says by 73, where it has something else.
    const bool is_attribute = kPrimitives[record.primitive] == "ATTRIB";
    const int across = entity.Whole(72);
    const int up = entity.Whole(is_attribute ? 74 : 73);
    if (is_attribute && (entity.Whole(70) & 1) != 0) record.is_visible = false;
    StoredText text;
    if (across >= 0 && across <= kFit) text.across = kAcross[across];
    if (up >= 0 && up <= 3) text.up = kUp[up];
    if (across == kMiddle) text.up = TextUp::Middle;
    const bool is_anchored =
        (across != 0 || up != 0) && entity.Has(11) && across != kAligned && across != kFit;
    text.origin = entity.Point(is_anchored ? 11 : 10);
    text.height = entity.Real(40);
    text.width = entity.Real(41, 1);
    set_direction(entity, across, text);
    set_style(entity.Text(7), text, builder);
    text.lines = builder.Letters(shown_line(builder.Decode(entity.Text(1))));
    const Vector3 normal = entity.Normal();
    record.placing = builder.PlaneOf(normal);
    set_text(text, is_vertical(normal) ? DrawingKind::Text : DrawingKind::Text3D, record, builder);
    return true;
}

bool make_multiline_text(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    if (!entity.Has(10) || !entity.Has(20)) return false;
    StoredText text;
    text.origin = entity.Point(10);
    text.height = entity.Real(40);
    text.normal = unit(entity.Normal(), kZAxis);
    // Behind 75 and 76 the code 50 tells heights of columns.
    const bool has_rotation =
        entity.Has(50) && !entity.IsBehind(50, 75) && !entity.IsBehind(50, 76);
    const bool has_direction = entity.Has(11) && length(entity.Point(11)) > 0;
    if (has_direction && (!has_rotation || entity.IsBehind(11, 50))) {
        text.direction = unit(entity.Point(11), kXAxis);
        text.rotation = degrees_of(text.direction);
    } else {
        const double rotation = has_rotation ? entity.Real(50) : 0;
        text.direction = plane_of(text.normal).Direction(turn(rotation).x);
        text.rotation =
            text.normal == kZAxis ? from_0_to_360(rotation) : degrees_of(text.direction);
    }
    const int attachment = entity.Whole(71, 1) - 1;
    if (attachment >= 0 && attachment < 9) {
        constexpr TextUp kRows[] = {TextUp::Top, TextUp::Middle, TextUp::Bottom};
        text.across = kAcross[attachment % 3];
        text.up = kRows[attachment / 3];
    }
    set_style(entity.Text(7), text, builder);
    // A character may begin in one piece and end in the next.
    const std::string raw = std::string(entity.Text(3)) + std::string(entity.Text(1));
    const ShownText shown = shown_text(builder.Decode(raw));
    if (!shown.font.empty()) text.font = builder.Name(shown.font);
    text.lines = builder.Letters(shown.lines);
    set_text(text, DrawingKind::Text3D, record, builder);
    return true;
}

void make_multileader_text(const MultileaderParts& parts, DrawingRecord& record,
                           DrawingBuilder& builder) {
    StoredText text;
    text.origin = parts.place;
    text.direction = unit(parts.direction, kXAxis);
    text.normal = unit(parts.normal, kZAxis);
    text.rotation = degrees_of(text.direction);
    text.height = parts.text_height;
    text.up = TextUp::Top;
    set_style({}, text, builder);
    const ShownText shown = shown_text(builder.Decode(parts.raw_text));
    if (!shown.font.empty()) text.font = builder.Name(shown.font);
    text.lines = builder.Letters(shown.lines);
    set_text(text, DrawingKind::Text3D, record, builder);
}

}  // namespace zol::engine
