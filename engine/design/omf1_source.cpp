#include "engine/design/omf1_source.h"

#include <algorithm>
#include <utility>

#include "engine/design/colour_list.h"
#include "engine/design/omf1_data.h"
#include "engine/design/omf1_layer.h"
#include "engine/formats/diagnostics.h"
#include "engine/formats/omf1_elements.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/read_error.h"

namespace zol::engine::design {

namespace {

void add_colours(const File& file, const Omf1Document& document, const Omf1Element& element,
                 ColourList& colours) {
    try {
        colours.Add(element_colour(element.object).value_or(kPlainColour));
        for_each_colour(file, document, element.object,
                        [&](const Omf1Colour& colour) { colours.Add(colour); });
    } catch (const ReadError& error) {
        // The layer does not open either, and the others do.
        report(file.Path(), "\"" + element.name + "\": " + error.what());
    }
}

class Omf1Source final : public Source {
public:
    explicit Omf1Source(std::shared_ptr<const File> file)
        : file_(std::move(file)), document_(*file_) {
        const std::vector<Omf1Element> elements = document_.Elements();
        // Says what there is where there is none.
        choose_element(elements, "", "line set or point set", is_omf1_layer);
        auto colours = std::make_shared<ColourList>();
        for (const Omf1Element& element : elements) {
            if (!is_omf1_layer(element)) continue;
            add_colours(*file_, document_, element, *colours);
            names_.push_back(element.name);
            layers_.push_back(element);
        }
        colours_ = std::move(colours);
    }

    const std::vector<std::string>& LayerNames() const override { return names_; }
    std::optional<std::size_t> FindLayer(const std::string& name) const override {
        const auto found = std::find(names_.begin(), names_.end(), name);
        if (found == names_.end()) return std::nullopt;
        return static_cast<std::size_t>(found - names_.begin());
    }
    std::unique_ptr<LayerSource> OpenLayer(std::size_t position) override {
        return open_omf1_layer(*file_, document_, layers_[position], colours_);
    }
    std::vector<graphics::RGB> ColourTable() const override { return colours_->Table(); }

private:
    std::shared_ptr<const File> file_;
    Omf1Document document_;
    std::vector<std::string> names_;
    std::vector<Omf1Element> layers_;
    std::shared_ptr<const ColourList> colours_;
};

}  // namespace

std::unique_ptr<Source> open_omf1(std::shared_ptr<const File> file) {
    return std::make_unique<Omf1Source>(std::move(file));
}

}  // namespace zol::engine::design
