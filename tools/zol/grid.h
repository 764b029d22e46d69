// A grid behind the flat interface, as a C++ value: it closes itself, and a masked node
// is one whose value is NaN.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "api/zolExportedApi_ReadOnly.h"
#include "tools/zol/grid_nodes.h"
#include "tools/zol/progress_bar.h"

namespace zol::tool {

/// An open grid. Each operation throws ReadFailure when the call below fails.
class Grid {
public:
    /// Throws ReadFailure when the file does not open.
    explicit Grid(const std::string& file);

    const Lattice& Nodes() const { return nodes_; }
    /// NaN where the node is masked.
    double Value(int i, int j) const;
    /// The same; nothing where the node can't be read.
    std::optional<double> ValueIfReadable(int i, int j) const;
    /// The values of nodes (i, j), (i + 1, j), ..., as many as `values` has room for.
    void ReadRow(int i, int j, std::span<double> values) const;

private:
    struct Close {
        void operator()(GridHandle* handle) const { ZOL_Grid_Close(handle); }
    };

    std::unique_ptr<GridHandle, Close> handle_;
    Lattice nodes_;
};

/// Gives all nodes to `take`, row by row from the north and west to east in each. A long
/// row comes in several runs, so that no width asks for much memory.
void walk(const Grid& grid, ProgressBar& progress, const std::function<void(const Run&)>& take);

}  // namespace zol::tool
