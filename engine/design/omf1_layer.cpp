#include "engine/design/omf1_layer.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "engine/design/omf1_data.h"
#include "engine/formats/growing_array.h"
#include "engine/formats/number_text.h"
#include "engine/formats/omf1_geometry.h"
#include "engine/formats/text_lines.h"

namespace zol::engine::design {

namespace {

using Segment = std::array<std::int32_t, 2>;

constexpr std::string_view kLineSet = "LineSetElement";
constexpr std::string_view kPointSet = "PointSetElement";

/// Segments that join end to end in the order of the file.
struct Chain {
    std::size_t first = 0;
    std::size_t count = 0;
    bool is_closed = false;
};

/// A chain ends where the next segment does not begin at its end, and where it has come back to
/// its start. There and back again along one segment is no way round.
std::vector<Chain> chains_of(const GrowingArray<Segment>& segments) {
    constexpr std::size_t kLeastWayRound = 3;
    std::vector<Chain> chains;
    for (std::size_t i = 0; i < segments.Size(); ++i) {
        const bool goes_on =
            !chains.empty() && !chains.back().is_closed && segments[i][0] == segments[i - 1][1];
        if (!goes_on) chains.push_back({i, 0, false});
        Chain& chain = chains.back();
        ++chain.count;
        chain.is_closed =
            chain.count >= kLeastWayRound && segments[i][1] == segments[chain.first][0];
    }
    return chains;
}

/// What a data of this name says of an object; others are metadata.
std::string* member_for(const std::string& name, ObjectRecord& record) {
    struct Member {
        std::string_view name;
        std::string ObjectRecord::*text;
    };
    constexpr std::array kMembers = {
        Member{"name", &ObjectRecord::name},
        Member{"group", &ObjectRecord::group},
        Member{"feature", &ObjectRecord::feature},
        Member{"description", &ObjectRecord::description},
    };
    for (const Member& member : kMembers) {
        if (is_same_word(name, member.name)) return &(record.*member.text);
    }
    return nullptr;
}

std::string optional_text(const JsonValue& object, std::string_view key) {
    const std::optional<JsonValue> value = object.Find(key);
    return value ? value->Text() : std::string();
}

class Omf1Layer final : public LayerSource {
public:
    Omf1Layer(const File& file, const Omf1Document& document, const Omf1Element& element,
              std::shared_ptr<const ColourList> colours)
        : name_(element.name),
          description_(optional_text(element.object, "description")),
          subtype_(optional_text(element.object, "subtype")),
          is_lines_(element.class_name == kLineSet),
          colour_(element_colour(element.object).value_or(kPlainColour)),
          colours_(std::move(colours)) {
        const JsonValue geometry = document.Follow(
            element.object.Get("geometry"), {is_lines_ ? "LineSetGeometry" : "PointSetGeometry"});
        if (is_lines_) {
            read_indices(file, document, geometry.Get("segments"), "Int2Array", "segment",
                         segments_);
        }
        read_vertices(file, document, geometry, vertices_);
        check_indices(segments_, "segment", vertices_.Size());
        chains_ = chains_of(segments_);
        DataCounts counts{vertices_.Size(), std::nullopt};
        if (is_lines_) counts.segments = segments_.Size();
        data_ = read_omf1_data(file, document, element.object, counts);
    }

    std::string Name() const override { return name_; }
    std::string Description() const override { return description_; }
    std::size_t Count() override { return is_lines_ ? chains_.size() : vertices_.Size(); }
    ObjectRecord Read(std::size_t object) override;

private:
    /// The rows of an object's vertices or segments.
    std::vector<std::size_t> Rows(std::size_t object, DataPlace place) const;
    /// The value that all rows have; nothing when they differ.
    template <class T>
    std::optional<T> Common(std::size_t object, DataPlace place, const ValueAt<T>& value) const;
    void AddData(std::size_t object, ObjectRecord& record) const;

    std::string name_;
    std::string description_;
    std::string subtype_;
    bool is_lines_;
    Omf1Colour colour_;
    std::shared_ptr<const ColourList> colours_;
    GrowingArray<Vector3> vertices_;
    /// Of a line set.
    GrowingArray<Segment> segments_;
    std::vector<Chain> chains_;
    Omf1DataSet data_;
};

std::vector<std::size_t> Omf1Layer::Rows(std::size_t object, DataPlace place) const {
    if (!is_lines_) return {object};
    const Chain& chain = chains_[object];
    std::vector<std::size_t> rows;
    rows.reserve(chain.count + 1);
    for (std::size_t i = chain.first; i < chain.first + chain.count; ++i) {
        rows.push_back(place == DataPlace::Segments ? i
                                                    : static_cast<std::size_t>(segments_[i][0]));
    }
    if (place == DataPlace::Vertices && !chain.is_closed) {
        rows.push_back(static_cast<std::size_t>(segments_[chain.first + chain.count - 1][1]));
    }
    return rows;
}

template <class T>
std::optional<T> Omf1Layer::Common(std::size_t object, DataPlace place,
                                   const ValueAt<T>& value) const {
    const std::vector<std::size_t> rows = Rows(object, place);
    T common = value(rows.front());
    for (const std::size_t row : rows) {
        if (value(row) != common) return std::nullopt;
    }
    return common;
}

void Omf1Layer::AddData(std::size_t object, ObjectRecord& record) const {
    for (const Omf1Data& data : data_.data) {
        std::string text = Common(object, data.place, data.text).value_or(std::string());
        if (text.empty()) continue;
        if (std::string* const member = member_for(data.name, record)) {
            *member = std::move(text);
        } else if (!is_same_word(data.name, "value") || !parse_number(text, record.value)) {
            record.fields.push_back({data.name, std::move(text)});
        }
    }
}

ObjectRecord Omf1Layer::Read(std::size_t object) {
    ObjectRecord record;
    PolylineShape shape;
    for (const std::size_t row : Rows(object, DataPlace::Vertices)) {
        shape.line.points.push_back({vertices_[row]});
    }
    shape.line.is_closed = is_lines_ && chains_[object].is_closed;
    record.value = shape.line.points.front().place[2];
    record.shape = std::move(shape);
    record.name = std::to_string(object + 1);
    record.feature = subtype_;
    record.primitive = is_lines_ ? "LineSet" : "PointSet";
    Omf1Colour colour = colour_;
    if (data_.colours) {
        colour = Common(object, data_.colours->place, data_.colours->colour)
                     .value_or(std::nullopt)
                     .value_or(colour_);
    }
    record.colour = colours_->PositionOf(colour);
    AddData(object, record);
    return record;
}

}  // namespace

bool is_omf1_layer(const Omf1Element& element) {
    return element.class_name == kLineSet || element.class_name == kPointSet;
}

std::unique_ptr<LayerSource> open_omf1_layer(const File& file, const Omf1Document& document,
                                             const Omf1Element& element,
                                             std::shared_ptr<const ColourList> colours) {
    return std::make_unique<Omf1Layer>(file, document, element, std::move(colours));
}

}  // namespace zol::engine::design
