#include "engine/design/drawing_source.h"

#include <cstdint>
#include <unordered_map>
#include <utility>

#include "engine/formats/dxf/colour_index.h"
#include "engine/formats/dxf/dxf_file.h"

namespace zol::engine::design {

namespace {

/// 0x00RRGGBB, as drawings have it.
graphics::RGB packed(std::uint32_t colour) {
    return {(colour & 0xFFU) << 16U | (colour & 0xFF00U) | colour >> 16U};
}

/// The drawing with what its objects' colours are called.
class DrawingContent {
public:
    explicit DrawingContent(Drawing drawing) : drawing_(std::move(drawing)) {
        for (int index = 0; index < kPaletteSize; ++index) {
            table_.push_back(packed(colour_of_index(index)));
        }
        for (const std::uint32_t colour : drawing_.TrueColours()) {
            if (place_of_true_colour_.emplace(colour, table_.size()).second) {
                table_.push_back(packed(colour));
            }
        }
    }

    const Drawing& Objects() const { return drawing_; }
    const std::vector<graphics::RGB>& Table() const { return table_; }

    /// Colours that are told by red, green and blue stand behind the numbered ones.
    int ColourOf(const DrawingTraits& traits) const {
        if (!traits.true_colour) return traits.colour;
        const auto found = place_of_true_colour_.find(*traits.true_colour);
        return found == place_of_true_colour_.end() ? traits.colour
                                                    : static_cast<int>(found->second);
    }

private:
    static constexpr int kPaletteSize = 256;

    Drawing drawing_;
    std::vector<graphics::RGB> table_;
    std::unordered_map<std::uint32_t, std::size_t> place_of_true_colour_;
};

using SharedContent = std::shared_ptr<const DrawingContent>;

ObjectShape shape_of(const Drawing& drawing, std::size_t object, const DrawingTraits& traits) {
    switch (traits.kind) {
        case DrawingKind::Polyline:
            return PolylineShape{
                drawing.Polyline(object), {}, traits.line_type, traits.line_weight};
        case DrawingKind::Text:
        case DrawingKind::Text3D:
            return drawing.Text(object);
        case DrawingKind::Arrow:
            return drawing.Arrow(object);
        default:
            return drawing.Dimension(object);
    }
}

class DrawingLayerSource final : public LayerSource {
public:
    DrawingLayerSource(SharedContent content, std::size_t layer)
        : content_(std::move(content)), layer_(layer) {}

    std::string Name() const override { return content_->Objects().Layers()[layer_].name; }
    std::string Description() const override {
        return content_->Objects().Layers()[layer_].description;
    }
    std::size_t Count() override { return content_->Objects().ObjectsOf(layer_).size(); }

    ObjectRecord Read(std::size_t object) override {
        const Drawing& drawing = content_->Objects();
        const std::size_t place = drawing.ObjectsOf(layer_)[object];
        DrawingTraits traits = drawing.Traits(place);
        ObjectRecord record;
        record.kind = traits.kind;
        record.shape = shape_of(drawing, place, traits);
        record.name = std::move(traits.name);
        record.group = std::move(traits.group);
        record.feature = std::move(traits.feature);
        record.description = std::move(traits.description);
        record.primitive = traits.primitive;
        record.value = traits.value;
        record.colour = content_->ColourOf(traits);
        record.fields = drawing.Fields(place);
        return record;
    }

private:
    SharedContent content_;
    std::size_t layer_;
};

class DrawingSource final : public Source {
public:
    explicit DrawingSource(Drawing drawing)
        : content_(std::make_shared<const DrawingContent>(std::move(drawing))) {
        for (const DrawingLayer& layer : content_->Objects().Layers()) {
            names_.push_back(layer.name);
        }
    }

    const std::vector<std::string>& LayerNames() const override { return names_; }
    std::optional<std::size_t> FindLayer(const std::string& name) const override {
        return content_->Objects().FindLayer(name);
    }
    std::unique_ptr<LayerSource> OpenLayer(std::size_t position) override {
        return std::make_unique<DrawingLayerSource>(content_, position);
    }
    std::vector<graphics::RGB> ColourTable() const override { return content_->Table(); }

private:
    SharedContent content_;
    std::vector<std::string> names_;
};

}  // namespace

std::unique_ptr<Source> open_drawing(const File& file) {
    return std::make_unique<DrawingSource>(read_dxf(file));
}

}  // namespace zol::engine::design
