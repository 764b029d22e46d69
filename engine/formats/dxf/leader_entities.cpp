// LEADER and MULTILEADER.
#include "engine/formats/dxf/entities.h"

namespace zol::engine {

namespace {

constexpr int kText = 0;
constexpr int kNothing = 3;

void set_arrow(const StoredArrow& arrow, std::span<const Vector3> points, DrawingRecord& record,
               DrawingBuilder& builder) {
    builder.SetPoints(points, record);
    record.kind = DrawingKind::Arrow;
    record.detail = static_cast<std::uint32_t>(builder.Data().arrows.Size());
    builder.Data().arrows.Add(arrow);
}

// Takes x, y or z of the last point by its code, a first coordinate begins one.
void take_coordinate(int code, double value, std::vector<Vector3>& points) {
    if (code == 10) {
        points.push_back({value, 0, 0});
    } else if ((code == 20 || code == 30) && !points.empty()) {
        points.back()[static_cast<std::size_t>(code / 10 - 1)] = value;
    }
}

// A coordinate of a point that stands at `first`, `first` + 10 and `first` + 20.
bool take_part(const TagReader& tags, int first, Vector3& point) {
    const int at = tags.Code() - first;
    if (at != 0 && at != 10 && at != 20) return false;
    point[static_cast<std::size_t>(at / 10)] = tags.Real();
    return true;
}

// The context of a MULTILEADER: braces in braces, in which codes mean different things.
class MultileaderReader {
public:
    MultileaderReader(TagReader& tags, Entity& entity) : tags_(tags), entity_(entity) {}

    MultileaderParts Read() {
        while (tags_.Next()) {
            const int code = tags_.Code();
            if (code == 0) {
                tags_.PutBack();
                break;
            }
            if (code == 300 && IsOpening()) {
                place_ = Place::Context;
            } else if (place_ == Place::Outside) {
                if (code == 170) parts_.is_spline = tags_.Real() == 2;
                if (code != 10 && code != 20 && code != 30) entity_.Take(tags_);
            } else {
                TakeInside(code);
            }
        }
        return std::move(parts_);
    }

private:
    enum class Place { Outside, Context, Leader, Line };

    bool IsOpening() const { return without_blanks(tags_.Text()).ends_with('{'); }

    void TakeInside(int code) {
        if (code == 301) {
            place_ = Place::Outside;
        } else if (code == 302 && IsOpening()) {
            place_ = Place::Leader;
            end_.clear();
            first_of_leader_ = parts_.lines.size();
        } else if (code == 303) {
            CloseLeader();
        } else if (code == 304 && place_ == Place::Leader && IsOpening()) {
            place_ = Place::Line;
            parts_.lines.emplace_back();
        } else if (code == 305) {
            place_ = Place::Leader;
        } else if (place_ == Place::Context) {
            TakeContext(code);
        } else if (code == 10 || code == 20 || code == 30) {
            take_coordinate(code, tags_.Real(), place_ == Place::Line ? parts_.lines.back() : end_);
        }
    }

    void TakeContext(int code) {
        if (code == 304) {
            parts_.raw_text = tags_.Text();
        } else if (code == 290) {
            parts_.has_text = tags_.Real() != 0;
        } else if (code == 41) {
            parts_.text_height = tags_.Real();
        } else if (code == 140) {
            parts_.arrow_length = tags_.Real();
        } else if (!take_part(tags_, 11, parts_.normal) && !take_part(tags_, 12, parts_.place)) {
            take_part(tags_, 13, parts_.direction);
        }
    }

    // All lines of a leader end where it meets its text.
    void CloseLeader() {
        for (std::size_t i = first_of_leader_; i < parts_.lines.size() && !end_.empty(); ++i) {
            parts_.lines[i].push_back(end_.front());
        }
        place_ = Place::Context;
    }

    TagReader& tags_;
    Entity& entity_;
    MultileaderParts parts_;
    std::vector<Vector3> end_;
    std::size_t first_of_leader_ = 0;
    Place place_ = Place::Outside;
};

}  // namespace

bool make_leader(const Entity& entity, DrawingRecord& record, DrawingBuilder& builder) {
    std::vector<Vector3> points;
    for (const ListedReal& listed : entity.Listed()) {
        take_coordinate(listed.code, listed.value, points);
    }
    if (points.size() < 2) return false;
    const DimensionStyle style = builder.StyleOf(entity);
    StoredArrow arrow;
    arrow.normal = unit(entity.Normal(), kZAxis);
    arrow.head_length = style.arrow_length;
    arrow.scale = style.scale;
    arrow.has_head = entity.Whole(71, 1) != 0;
    arrow.is_curved = entity.Whole(72) == 1;
    const int annotation = entity.Whole(73, kNothing);
    arrow.annotation = static_cast<std::uint8_t>(
        annotation >= 0 && annotation <= kNothing ? annotation : kNothing);
    // The hook, where there is one, runs along the text or against it.
    if (entity.Whole(75) != 0) arrow.hook = entity.Whole(74, 1) == 0 ? 2 : 1;
    set_arrow(arrow, points, record, builder);
    return true;
}

MultileaderParts read_multileader(TagReader& tags, Entity& entity) {
    return MultileaderReader(tags, entity).Read();
}

bool make_multileader_line(const MultileaderParts& parts, std::size_t line, DrawingRecord& record,
                           DrawingBuilder& builder) {
    if (parts.lines[line].size() < 2) return false;
    StoredArrow arrow;
    arrow.normal = unit(parts.normal, kZAxis);
    arrow.head_length = parts.arrow_length;
    arrow.is_curved = parts.is_spline;
    arrow.annotation = parts.has_text ? kText : kNothing;
    set_arrow(arrow, parts.lines[line], record, builder);
    return true;
}

}  // namespace zol::engine
