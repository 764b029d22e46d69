#include <algorithm>
#include <cstddef>
#include <utility>

#include "engine/design/metadata_state.h"

namespace zol::design {

Metadata::Metadata(std::shared_ptr<const State> state) : state_(std::move(state)) {}

Metadata::Metadata(const Metadata& other) = default;

Metadata::~Metadata() = default;

bool Metadata::HasMetadata() const {
    return !state_->fields.empty();
}

int Metadata::NFields() const {
    return static_cast<int>(state_->fields.size());
}

bool Metadata::HasField(const std::string& name) const {
    return GetFieldIndex(name) >= 0;
}

int Metadata::GetFieldIndex(const std::string& name) const {
    const auto& fields = state_->fields;
    const auto found =
        std::find_if(fields.begin(), fields.end(),
                     [&name](const engine::DrawingField& field) { return field.name == name; });
    return found == fields.end() ? -1 : static_cast<int>(found - fields.begin());
}

std::string Metadata::GetField(int position) const {
    return state_->fields[static_cast<std::size_t>(position)].name;
}

std::string Metadata::GetValue(int position) const {
    return state_->fields[static_cast<std::size_t>(position)].value;
}

std::string Metadata::GetValue(const std::string& name) const {
    const int position = GetFieldIndex(name);
    return position < 0 ? std::string() : GetValue(position);
}

}  // namespace zol::design
