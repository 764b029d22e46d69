// What a grid library answers: a regular lattice of nodes, each with a value.
//
// Contracts only. The engine stands behind these classes, and so does the scripted
// library of the tests; each brings its own hidden state.
//
// Node (0, 0) is the one of least x and y, the first index runs along x and the second
// along y. One grid is for one thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/model.h"
#include "platform/visibility.h"
#include "platform/zolGeometryExport.h"

namespace zol::model::grid {

/// A lattice of nodes.
class ZOL_PLATFORM IGrid : public IModel {
public:
    /// True when the grid has been read. Nothing else is to be asked of one that is not.
    virtual bool IsValid() const = 0;
    /// The nodes of least and of greatest coordinates.
    virtual void GetExtent(geometry::Point2D& lower, geometry::Point2D& upper) const = 0;
    /// The distance between neighbouring nodes along x and along y; greater than 0.
    virtual void GetSpacing(double& along_x, double& along_y) const = 0;
    /// Counts of nodes along x and along y; 1 or more.
    virtual std::int32_t GetWidthNodeCount() const = 0;
    virtual std::int32_t GetHeightNodeCount() const = 0;
    /// The value of a node, and whether it is masked: marked as having no data. False
    /// when there is no such node or it can't be read; both outputs then stay.
    virtual bool GetNodeValue(int column, int row, double& value, bool& masked) const = 0;
    ~IGrid() override;

protected:
    IGrid() = default;
    IGrid(const IGrid&) = default;
    IGrid& operator=(const IGrid&) = default;
};

/// A grid read from a file.
class ZOL_PLATFORM Grid final : public IGrid {
public:
    /// Reads the named file. Reports nothing: ask IsValid.
    explicit Grid(const std::string& file);
    Grid(const Grid&) = delete;
    Grid& operator=(const Grid&) = delete;
    ~Grid() override;

    bool IsValid() const override;
    void GetExtent(geometry::Point2D& lower, geometry::Point2D& upper) const override;
    void GetSpacing(double& along_x, double& along_y) const override;
    std::int32_t GetWidthNodeCount() const override;
    std::int32_t GetHeightNodeCount() const override;
    bool GetNodeValue(int column, int row, double& value, bool& masked) const override;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace zol::model::grid
