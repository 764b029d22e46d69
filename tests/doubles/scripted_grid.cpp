#include "tests/doubles/scripted_grid.h"

#include "tests/doubles/journal.h"

namespace zol::doubles {

GridScript grid_script;
std::vector<std::string> grid_journal;

namespace {

template <class... Arguments>
void note(const char* operation, const Arguments&... arguments) {
    grid_journal.push_back(journal_entry(operation, arguments...));
    if (grid_script.throwing == operation) {
        throw GridFailure(operation);
    }
}

}  // namespace
}  // namespace zol::doubles

namespace zol::model::grid {

using doubles::grid_script;
using doubles::note;

struct Grid::State {};

IGrid::~IGrid() = default;

Grid::Grid(const std::string& file) {
    note("Grid::Grid", file);
}

Grid::~Grid() {
    doubles::grid_journal.emplace_back("Grid::~Grid");
}

bool Grid::IsValid() const {
    note("Grid::IsValid");
    return grid_script.valid;
}

void Grid::GetExtent(geometry::Point2D& lower, geometry::Point2D& upper) const {
    note("Grid::GetExtent");
    lower = grid_script.lower;
    upper = grid_script.upper;
}

void Grid::GetSpacing(double& along_x, double& along_y) const {
    note("Grid::GetSpacing");
    along_x = grid_script.along_x;
    along_y = grid_script.along_y;
}

std::int32_t Grid::GetWidthNodeCount() const {
    note("Grid::GetWidthNodeCount");
    return grid_script.width;
}

std::int32_t Grid::GetHeightNodeCount() const {
    note("Grid::GetHeightNodeCount");
    return grid_script.height;
}

bool Grid::GetNodeValue(int column, int row, double& value, bool& masked) const {
    note("Grid::GetNodeValue", column, row, masked);
    value = grid_script.value;
    masked = grid_script.masked;
    return grid_script.readable;
}

}  // namespace zol::model::grid
