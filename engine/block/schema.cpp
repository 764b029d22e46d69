// Schemas and block extents: values that callers copy.
#include <utility>

#include "engine/block/model_state.h"

namespace zol::model::block {

BlockExtent::BlockExtent(const geometry::Extent& extent) : extent_(extent) {}
BlockExtent::~BlockExtent() = default;
geometry::Extent BlockExtent::GetExtent() const {
    return extent_;
}

Schema::Schema() : Schema(std::make_shared<State>()) {}
Schema::Schema(std::shared_ptr<const State> state) : state_(std::move(state)) {}
Schema::Schema(const Schema&) = default;
Schema& Schema::operator=(const Schema&) = default;
Schema::~Schema() = default;

bool Schema::IsOriginal() const {
    return state_->facts.original;
}
geometry::Extent Schema::GetExtent() const {
    return state_->facts.extent;
}
geometry::Point3I Schema::GetDimensions() const {
    return state_->facts.dimensions;
}
geometry::Coord3D Schema::GetMinimumSize() const {
    return state_->facts.minimum_size;
}
geometry::Coord3D Schema::GetMaximumSize() const {
    return state_->facts.maximum_size;
}

}  // namespace zol::model::block
