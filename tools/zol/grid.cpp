#include "tools/zol/grid.h"

#include <algorithm>
#include <array>
#include <limits>

#include "tools/zol/exit_codes.h"
#include "tools/zol/last_error.h"

namespace zol::tool {

namespace {

constexpr int kLongestRun = 4096;

void require(int status) {
    if (status != 0) fail_by_last_error();
}

Lattice lattice_of(GridHandle* handle) {
    Lattice nodes;
    require(ZOL_Grid_NumNodes(handle, &nodes.width, &nodes.height));
    require(
        ZOL_Grid_GetExtent(handle, &nodes.first_x, &nodes.first_y, &nodes.last_x, &nodes.last_y));
    require(ZOL_Grid_GetSpacing(handle, &nodes.dx, &nodes.dy));
    return nodes;
}

}  // namespace

Grid::Grid(const std::string& file) : handle_(ZOL_Grid_Open(file.c_str())) {
    if (handle_ == nullptr) fail_by_last_error();
    nodes_ = lattice_of(handle_.get());
}

std::optional<double> Grid::ValueIfReadable(int i, int j) const {
    double value = 0;
    int is_masked = 0;
    if (ZOL_Grid_GetNodeValue(handle_.get(), &i, &j, &value, &is_masked) != 0) {
        if (ZOL_API_HasError() != 0) fail_by_last_error();
        return std::nullopt;
    }
    return is_masked != 0 ? std::numeric_limits<double>::quiet_NaN() : value;
}

double Grid::Value(int i, int j) const {
    const auto value = ValueIfReadable(i, j);
    if (!value) {
        throw ReadFailure("node (" + std::to_string(i) + ", " + std::to_string(j) +
                          ") can't be read.");
    }
    return *value;
}

void Grid::ReadRow(int i, int j, std::span<double> values) const {
    for (double& value : values) value = Value(i++, j);
}

void walk(const Grid& grid, ProgressBar& progress, const std::function<void(const Run&)>& take) {
    const int width = grid.Nodes().width;
    std::array<double, kLongestRun> room;
    for (int j = grid.Nodes().height - 1; j >= 0; --j) {
        for (int i = 0; i < width;) {
            const int count = std::min(kLongestRun, width - i);
            const auto values = std::span(room).first(static_cast<std::size_t>(count));
            grid.ReadRow(i, j, values);
            take({i, j, values});
            progress.Advance(count);
            i += count;
        }
    }
}

}  // namespace zol::tool
