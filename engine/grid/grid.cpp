// The grid as its callers know it.
#include <optional>

#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"
#include "engine/grid/node_values.h"
#include "engine/grid/source.h"
#include "platform/zolGridExport.h"
#include "support/floating_point.h"

namespace zol::model::grid {

using engine::grid::Lattice;
using engine::grid::NodeValues;
using engine::grid::Source;

struct Grid::State {
    State(Source source, const std::string& file)
        : lattice(source.lattice), nodes(std::move(source), file) {}

    Lattice lattice;
    NodeValues nodes;
};

IGrid::~IGrid() = default;

Grid::Grid(const std::string& file) {
    const support::UsualFloatingPoint usual;
    try {
        state_ = std::make_unique<State>(engine::grid::open_source(file), file);
    } catch (const engine::ReadError& error) {
        engine::report(file, error.what());
    }
}

Grid::~Grid() = default;

bool Grid::IsValid() const {
    return state_ != nullptr;
}

void Grid::GetExtent(geometry::Point2D& lower, geometry::Point2D& upper) const {
    const Lattice& lattice = state_->lattice;
    lower = {lattice.x.lower, lattice.y.lower};
    upper = {lattice.x.upper, lattice.y.upper};
}

void Grid::GetSpacing(double& along_x, double& along_y) const {
    along_x = state_->lattice.x.spacing;
    along_y = state_->lattice.y.spacing;
}

std::int32_t Grid::GetWidthNodeCount() const {
    return state_->lattice.x.count;
}

std::int32_t Grid::GetHeightNodeCount() const {
    return state_->lattice.y.count;
}

bool Grid::GetNodeValue(int column, int row, double& value, bool& masked) const {
    return state_->nodes.Get(column, row, value, masked);
}

}  // namespace zol::model::grid
