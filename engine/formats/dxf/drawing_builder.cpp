#include "engine/formats/dxf/drawing_builder.h"

#include <cmath>

#include "engine/formats/dxf/extended_data.h"
#include "engine/formats/dxf/text_codes.h"

namespace zol::engine {

namespace {

constexpr std::string_view kLayerOfNothing = "0";

}  // namespace

DrawingBuilder::DrawingBuilder(const File& file) : decoder_(file) {
    for (const std::string_view name : kOwnFields) Name(std::string(name));
    for (const char* const unbroken : {"continuous", "bylayer", "byblock", ""}) {
        line_of_folded_name_[unbroken] = 0;
    }
    line_of_folded_name_["bylayer"] = kLineByLayer;
    line_of_folded_name_["byblock"] = kLineByBlock;
}

std::uint32_t DrawingBuilder::Layer(std::string_view raw) {
    // Entities of a layer mostly follow each other.
    if (last_layer_ != kNone && raw == last_raw_layer_) return last_layer_;
    last_raw_layer_ = raw;
    const auto known = layer_of_raw_name_.find(last_raw_layer_);
    if (known != layer_of_raw_name_.end()) return last_layer_ = known->second;
    const std::string name = Decode(raw);
    const auto next = static_cast<std::uint32_t>(data_->layers.size());
    const auto [entry, is_new] = data_->layer_of_folded_name.try_emplace(folded(name), next);
    if (is_new) {
        DrawingLayer layer;
        layer.name = name;
        data_->layers.push_back(std::move(layer));
    }
    layer_of_raw_name_[last_raw_layer_] = entry->second;
    return last_layer_ = entry->second;
}

std::uint16_t DrawingBuilder::LineType(std::string_view raw) {
    constexpr std::uint16_t kMostLineTypes = 60000;
    const std::string key = folded(Decode(without_blanks(raw)));
    const auto known = line_of_folded_name_.find(key);
    if (known != line_of_folded_name_.end()) return known->second;
    if (line_type_count_ >= kMostLineTypes) return 0;
    return line_of_folded_name_[key] = ++line_type_count_;
}

std::uint32_t DrawingBuilder::TrueColour(const Entity& entity) {
    // With the numbered ones no more than a table of 65,536.
    constexpr std::size_t kMostColours = 65280;
    const std::uint32_t colour = static_cast<std::uint32_t>(entity.Whole(420)) & 0xFFFFFFU;
    if (data_->true_colours.size() < kMostColours && known_true_colours_.insert(colour).second) {
        data_->true_colours.push_back(colour);
    }
    return colour;
}

std::uint32_t DrawingBuilder::Name(const std::string& name) {
    const auto next = static_cast<std::uint32_t>(data_->names.size());
    const auto [entry, is_new] = place_of_name_.try_emplace(name, next);
    if (is_new) data_->names.push_back(name);
    return entry->second;
}

DrawingLetters DrawingBuilder::Letters(std::string_view text) {
    GrowingArray<char>& letters = data_->letters;
    const DrawingLetters run{letters.Size(), static_cast<std::uint32_t>(text.size())};
    for (const char c : text) letters.Add(c);
    return run;
}

std::uint32_t DrawingBuilder::AddPlacing(const Placing& placing) {
    if (placing == Placing()) return kNone;
    GrowingArray<Placing>& placings = data_->placings;
    // Neighbours often lie in one plane.
    const std::size_t count = placings.Size();
    if (count > 0 && placings[count - 1] == placing) return static_cast<std::uint32_t>(count - 1);
    placings.Add(placing);
    return static_cast<std::uint32_t>(count);
}

std::uint32_t DrawingBuilder::PlaneOf(const Vector3& normal) {
    return normal == kZAxis ? kNone : AddPlacing(plane_of(normal));
}

std::uint32_t DrawingBuilder::AddCurve(const DrawingCurve& curve) {
    data_->curves.Add(curve);
    return static_cast<std::uint32_t>(data_->curves.Size() - 1);
}

void DrawingBuilder::SetPoints(std::span<const Vector3> points, DrawingRecord& record) {
    record.first_point = data_->points.Size();
    record.point_count = static_cast<std::uint32_t>(points.size());
    for (const Vector3& point : points) data_->points.Add(point);
}

DrawingRecord DrawingBuilder::Record(const Entity& entity, std::uint8_t primitive) {
    DrawingRecord record;
    record.primitive = primitive;
    record.handle = entity.Handle(5);
    record.layer = Layer(entity.Has(8) ? entity.Text(8) : kLayerOfNothing);
    const int colour = entity.Whole(62, kColourByLayer);
    record.colour = static_cast<std::int16_t>(
        colour >= kColourByBlock && colour <= kColourByLayer ? colour : kColourOfNothing);
    if (entity.Has(420)) {
        record.true_colour = TrueColour(entity);
        record.colour = static_cast<std::int16_t>(nearest_colour_index(record.true_colour));
    }
    record.line_type = entity.Has(6) ? LineType(entity.Text(6)) : kLineByLayer;
    const int weight = entity.Whole(370, kWeightByLayer);
    record.line_weight =
        static_cast<std::int16_t>(weight >= -3 && weight <= 1000 ? weight : kWeightOfNothing);
    record.is_visible = entity.Whole(60) == 0;
    if (!entity.Extended().empty()) TakeExtended(entity.Extended(), record);
    return record;
}

void DrawingBuilder::TakeExtended(std::span<const ExtendedTag> tags, DrawingRecord& record) {
    record.first_field = static_cast<std::uint32_t>(data_->fields.Size());
    for (const DrawingField& field : fields_of_extended(tags, decoder_)) {
        data_->fields.Add({Name(field.name), Letters(field.value)});
    }
    record.field_count = static_cast<std::uint32_t>(data_->fields.Size()) - record.first_field;
}

void DrawingBuilder::Resolve(DrawingRecord& record, const DrawingRecord* by) const {
    bool takes_all = false;
    if (by != nullptr && data_->layers[record.layer].name == kLayerOfNothing) {
        record.layer = by->layer;
        takes_all = true;
    }
    const DrawingLayer& layer = data_->layers[record.layer];
    if (record.colour == kColourByBlock || (record.colour == kColourByLayer && takes_all)) {
        record.colour = by == nullptr ? std::int16_t{kColourOfNothing} : by->colour;
        record.true_colour = by == nullptr ? kNone : by->true_colour;
    } else if (record.colour == kColourByLayer) {
        record.colour = static_cast<std::int16_t>(layer.colour);
        record.true_colour = layer.true_colour.value_or(kNone);
    }
    if (record.line_type == kLineByBlock || (record.line_type == kLineByLayer && takes_all)) {
        record.line_type = by == nullptr ? std::uint16_t{0} : by->line_type;
    } else if (record.line_type == kLineByLayer) {
        record.line_type = static_cast<std::uint16_t>(layer.line_type);
    }
    const bool by_layer = record.line_weight == kWeightByLayer;
    if (record.line_weight == kWeightByBlock || (by_layer && takes_all)) {
        record.line_weight = by == nullptr ? kWeightOfNothing : by->line_weight;
    } else if (by_layer) {
        record.line_weight = static_cast<std::int16_t>(layer.line_weight);
    }
}

void DrawingBuilder::AddObject(const DrawingRecord& record) {
    data_->objects.Add(record);
}

void DrawingBuilder::Skip(std::string_view what, std::uint64_t count) {
    constexpr std::size_t kMostNames = 100;
    const auto known = skipped_.find(what);
    if (known != skipped_.end()) {
        known->second += count;
    } else if (skipped_.size() < kMostNames) {
        skipped_.emplace(what, count);
    } else {
        skipped_["others"] += count;
    }
}

void DrawingBuilder::AddTextStyle(std::uint64_t handle, std::string_view raw_name,
                                  std::string_view raw_font) {
    const std::string name = Decode(raw_name);
    TextStyle style{name, kNone};
    if (!raw_font.empty()) style.font = Name(Decode(raw_font));
    text_styles_[folded(name)] = style;
    text_style_of_handle_[handle] = name;
}

TextStyle DrawingBuilder::StyleOf(std::string_view raw_name) {
    const std::string name = raw_name.empty() ? std::string("Standard") : Decode(raw_name);
    const auto known = text_styles_.find(folded(name));
    return known == text_styles_.end() ? TextStyle{name, kNone} : known->second;
}

void DrawingBuilder::AddDimensionStyle(const Entity& entity) {
    DimensionStyle style;
    style.name = Decode(entity.Text(2));
    style.TakeRow(entity);
    style.around = shown_line(Decode(entity.Text(3)));
    const auto text_style = text_style_of_handle_.find(style.text_style_handle);
    if (text_style != text_style_of_handle_.end()) style.text_style = text_style->second;
    dimension_styles_[folded(style.name)] = style;
}

DimensionStyle DrawingBuilder::StyleOf(const Entity& entity) {
    DimensionStyle style;
    style.name = entity.Has(3) ? Decode(entity.Text(3)) : "Standard";
    const auto known = dimension_styles_.find(folded(style.name));
    if (known != dimension_styles_.end()) style = known->second;
    style.TakeOverrides(entity.Extended(), decoder_);
    if (style.text_style.empty()) style.text_style = "Standard";
    return style;
}

void DrawingBuilder::OwnDictionary(const Entity& entity, std::size_t first) {
    if (entity.Dictionary() == 0) return;
    std::vector<std::uint32_t>& owners = dictionaries_[entity.Dictionary()];
    for (std::size_t i = first; i < data_->objects.Size(); ++i) {
        owners.push_back(static_cast<std::uint32_t>(i));
    }
}

Drawing DrawingBuilder::Finish() {
    DrawingData& data = *data_;
    data.first_of_layer.assign(data.layers.size() + 1, 0);
    for (const DrawingRecord& record : data.objects.View()) ++data.first_of_layer[record.layer + 1];
    for (std::size_t i = 1; i < data.first_of_layer.size(); ++i) {
        data.first_of_layer[i] += data.first_of_layer[i - 1];
    }
    data.objects_by_layer.resize(data.objects.Size());
    std::vector<std::uint32_t> next = data.first_of_layer;
    for (std::size_t i = 0; i < data.objects.Size(); ++i) {
        data.objects_by_layer[next[data.objects[i].layer]++] = static_cast<std::uint32_t>(i);
    }
    for (const auto& [what, count] : skipped_) data.skipped.push_back({what, count});
    data.objects.Trim();
    data.points.Trim();
    data.reals.Trim();
    data.marks.Trim();
    data.curves.Trim();
    data.placings.Trim();
    data.texts.Trim();
    data.arrows.Trim();
    data.fields.Trim();
    data.letters.Trim();
    return Drawing(std::move(data_));
}

}  // namespace zol::engine
