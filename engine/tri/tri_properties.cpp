#include "engine/tri/tri_properties.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace zol::model::tri {

struct TriProperties::State {
    graphics::RGB colour;
    std::string texture;
    float translucency = 0.0F;
};

TriProperties::TriProperties(std::shared_ptr<const State> state) : state_(std::move(state)) {}

// Out of line on purpose: callers take it from this library.
// NOLINTNEXTLINE(modernize-use-equals-default)
TriProperties::TriProperties(const TriProperties& other) : state_(other.state_) {}

TriProperties::~TriProperties() = default;

graphics::RGB TriProperties::GetColour() const {
    return state_->colour;
}

bool TriProperties::IsTextured() const {
    return !state_->texture.empty();
}

std::string TriProperties::GetTexture() const {
    return state_->texture;
}

bool TriProperties::IsTranslucent() const {
    return state_->translucency > 0.0F;
}

float TriProperties::GetTranslucency() const {
    return state_->translucency;
}

}  // namespace zol::model::tri

namespace zol::engine::tri {

model::tri::TriProperties make_properties(const MeshLook& look) {
    constexpr std::array<std::uint8_t, 3> kMidGrey = {128, 128, 128};
    const std::array<std::uint8_t, 3> colour = look.colour.value_or(kMidGrey);
    model::tri::TriProperties::State state;
    state.colour.value = colour[0] | static_cast<std::uint32_t>(colour[1]) << 8U |
                         static_cast<std::uint32_t>(colour[2]) << 16U;
    state.texture = look.texture.value_or("");
    state.translucency = static_cast<float>(1.0 - std::clamp(look.opacity.value_or(1.0), 0.0, 1.0));
    return model::tri::TriProperties(
        std::make_shared<const model::tri::TriProperties::State>(std::move(state)));
}

}  // namespace zol::engine::tri
