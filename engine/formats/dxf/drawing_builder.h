// Fills the lists of a drawing while its file is read.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engine/formats/dxf/colour_index.h"
#include "engine/formats/dxf/dimension_style.h"
#include "engine/formats/dxf/drawing_data.h"
#include "engine/formats/dxf/entity.h"
#include "engine/formats/dxf/text_decoder.h"

namespace zol::engine {

inline constexpr std::uint16_t kLineByLayer = 0xFFFF;
inline constexpr std::uint16_t kLineByBlock = 0xFFFE;
inline constexpr std::int16_t kWeightByLayer = -1;
inline constexpr std::int16_t kWeightByBlock = -2;
inline constexpr std::int16_t kWeightOfNothing = -3;

/// A row of the table of text styles.
struct TextStyle {
    std::string name;
    std::uint32_t font = kNone;
};

class DrawingBuilder {
public:
    explicit DrawingBuilder(const File& file);

    TextDecoder& Decoder() { return decoder_; }
    DrawingData& Data() { return *data_; }

    std::string Decode(std::string_view raw) { return decoder_.Decode(raw); }
    /// The layer of a name as it stands in the file; it comes to be when there is none.
    std::uint32_t Layer(std::string_view raw);
    /// The place of a line type among all, from 1; 0 for the unbroken one.
    std::uint16_t LineType(std::string_view raw);
    /// The entity's colour of red, green and blue, which it has to have.
    std::uint32_t TrueColour(const Entity& entity);
    /// The place of a name in the list of names.
    std::uint32_t Name(const std::string& name);
    DrawingLetters Letters(std::string_view text);
    /// The place of a map; kNone for the one that changes nothing.
    std::uint32_t AddPlacing(const Placing& placing);
    std::uint32_t PlaneOf(const Vector3& normal);
    std::uint32_t AddCurve(const DrawingCurve& curve);
    void SetPoints(std::span<const Vector3> points, DrawingRecord& record);

    /// The traits of an entity as the file tells them, with its extended data.
    DrawingRecord Record(const Entity& entity, std::uint8_t primitive);
    /// Puts colours and lines that the entity leaves to its layer, or to the insertion `by` that
    /// it comes in by, into a record. Without insertion null.
    void Resolve(DrawingRecord& record, const DrawingRecord* by) const;

    void AddObject(const DrawingRecord& record);
    void CutObjects(std::size_t count) { data_->objects.SetSize(count); }
    void Skip(std::string_view what, std::uint64_t count = 1);

    void AddTextStyle(std::uint64_t handle, std::string_view raw_name, std::string_view raw_font);
    TextStyle StyleOf(std::string_view raw_name);
    void AddDimensionStyle(const Entity& entity);
    /// The style of a name with what the extended data of the entity say otherwise.
    DimensionStyle StyleOf(const Entity& entity);

    /// Objects that own records have the handle of a dictionary of them.
    const std::unordered_map<std::uint64_t, std::vector<std::uint32_t>>& Dictionaries() const {
        return dictionaries_;
    }
    /// Remembers the dictionary for objects from `first` on.
    void OwnDictionary(const Entity& entity, std::size_t first);

    /// Sorts the objects by layer and gives the drawing away.
    Drawing Finish();

private:
    void TakeExtended(std::span<const ExtendedTag> tags, DrawingRecord& record);

    std::unique_ptr<DrawingData> data_ = std::make_unique<DrawingData>();
    TextDecoder decoder_;
    std::unordered_map<std::string, std::uint32_t> layer_of_raw_name_;
    std::string last_raw_layer_;
    std::uint32_t last_layer_ = kNone;
    std::unordered_map<std::string, std::uint16_t> line_of_folded_name_;
    std::uint16_t line_type_count_ = 0;
    std::unordered_set<std::uint32_t> known_true_colours_;
    std::unordered_map<std::string, std::uint32_t> place_of_name_;
    std::map<std::string, std::uint64_t, std::less<>> skipped_;
    std::unordered_map<std::string, TextStyle> text_styles_;
    std::unordered_map<std::uint64_t, std::string> text_style_of_handle_;
    std::unordered_map<std::string, DimensionStyle> dimension_styles_;
    std::unordered_map<std::uint64_t, std::vector<std::uint32_t>> dictionaries_;
};

}  // namespace zol::engine
