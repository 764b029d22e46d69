// Databases as their callers know them.
#include <cstddef>
#include <utility>

#include "engine/design/layer_state.h"
#include "engine/design/source.h"
#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"
#include "platform/zolDesignExport.h"
#include "support/floating_point.h"

namespace zol::design {

using engine::ReadError;
using engine::design::Source;
using support::UsualFloatingPoint;

struct Database::State {
    /// Takes down why something failed, for the caller and for the diagnostics.
    void Fail(const std::string& reason) {
        engine::report(name, reason);
        errors.push_back(reason);
    }

    bool Fill(std::size_t position, Layer* layer) {
        const UsualFloatingPoint usual;
        try {
            engine::design::fill(*layer, source->OpenLayer(position), name);
            return true;
        } catch (const ReadError& error) {
            engine::report(name, error.what());
        }
        return Empty(layer);
    }

    static bool Empty(Layer* layer) {
        *layer = Layer();
        return false;
    }

    std::string name;
    /// Null unless open.
    std::unique_ptr<Source> source;
    std::vector<std::string> errors;
};

Database::Database() : state_(std::make_unique<State>()) {}

Database::~Database() = default;

bool Database::Open(const std::string& path, const std::string& mode) {
    const UsualFloatingPoint usual;
    *state_ = {};
    state_->name = path;
    if (mode != "read") {
        state_->Fail("the mode '" + mode + "' is not known; a design can only be opened to read");
        return false;
    }
    try {
        state_->source = engine::design::open_source(path);
    } catch (const ReadError& error) {
        state_->Fail(error.what());
    }
    return IsOpen();
}

void Database::Close(bool /*save*/) {
    state_->source.reset();
}

bool Database::IsOpen() const {
    return state_->source != nullptr;
}

std::string Database::GetName() const {
    return state_->name;
}

int Database::NLayers() const {
    return IsOpen() ? static_cast<int>(state_->source->LayerNames().size()) : 0;
}

bool Database::Get(const std::string& name, Layer* layer) {
    const auto position = IsOpen() ? state_->source->FindLayer(name) : std::nullopt;
    return position ? state_->Fill(*position, layer) : State::Empty(layer);
}

bool Database::Get(int position, Layer* layer) {
    const bool is_there = position >= 0 && position < NLayers();
    return is_there ? state_->Fill(static_cast<std::size_t>(position), layer) : State::Empty(layer);
}

bool Database::Exists(const std::string& name) const {
    return IsOpen() && state_->source->FindLayer(name).has_value();
}

const std::vector<std::string>& Database::GetLayerList() {
    static const std::vector<std::string> kNone;
    return IsOpen() ? state_->source->LayerNames() : kNone;
}

bool Database::HasError() const {
    return !state_->errors.empty();
}

std::vector<std::string> Database::GetError() const {
    return state_->errors;
}

bool Database::GetColourTable(std::vector<graphics::RGB>& table) const {
    if (!IsOpen()) return false;
    std::vector<graphics::RGB> colours = state_->source->ColourTable();
    if (colours.empty()) return false;
    table = std::move(colours);
    return true;
}

std::string GetValidLayerName(const std::string& name) {
    constexpr const char* kBlanks = " \t\r\n\f\v";
    const std::size_t first = name.find_first_not_of(kBlanks);
    if (first == name.npos) return {};
    return name.substr(first, name.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace zol::design
