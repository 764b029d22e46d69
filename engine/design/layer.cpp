#include <algorithm>
#include <climits>
#include <utility>

#include "engine/design/layer_state.h"
#include "engine/design/object_state.h"
#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"
#include "support/floating_point.h"

namespace zol::design {

using engine::ReadError;
using engine::design::LayerSource;
using engine::design::ObjectRecord;
using support::UsualFloatingPoint;

struct Layer::State {
    State() = default;
    State(std::unique_ptr<LayerSource> reader, std::string of_file)
        : source(std::move(reader)), file(std::move(of_file)), name(source->Name()) {
        const std::size_t all = source->Count();
        if (all > INT_MAX) {
            engine::report(file, "layer '" + name +
                                     "' has more than 2147483647 objects; those "
                                     "behind them are left out");
        }
        count = static_cast<int>(std::min<std::size_t>(all, INT_MAX));
    }

    /// Null for an empty layer.
    std::unique_ptr<LayerSource> source;
    std::string file;
    std::string name;
    int count = 0;
};

Layer::Layer() : state_(std::make_unique<State>()) {}

Layer::Layer(std::unique_ptr<State> state) : state_(std::move(state)) {}

Layer& Layer::operator=(Layer&& other) noexcept = default;

Layer::~Layer() = default;

std::string Layer::GetName() const {
    return state_->name;
}

int Layer::NObjects() const {
    return state_->count;
}

bool Layer::GetObject(int index, Object* object) {
    const UsualFloatingPoint usual;
    ObjectRecord record;
    try {
        record = state_->source->Read(static_cast<std::size_t>(index));
    } catch (const ReadError& error) {
        engine::report(state_->file, error.what());
        record = {};
        record.error = error.what();
        engine::design::fill(*object, std::move(record));
        return false;
    }
    engine::design::fill(*object, std::move(record));
    return true;
}

std::string Layer::GetDescription() const {
    return state_->source == nullptr ? std::string() : state_->source->Description();
}

bool Layer::IsEdited() const {
    return false;
}

}  // namespace zol::design

namespace zol::engine::design {

void fill(zol::design::Layer& layer, std::unique_ptr<LayerSource> source, std::string file) {
    using State = zol::design::Layer::State;
    layer = zol::design::Layer(std::make_unique<State>(std::move(source), std::move(file)));
}

}  // namespace zol::engine::design
