// Full lattices: every cell of three axes is a block.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "engine/block/cell_order.h"
#include "engine/block/geometry.h"
#include "engine/block/source.h"

namespace zol::engine::block {

/// Cells along one axis of a model, in model coordinates, without gaps: the upper
/// face of a cell and the lower face of the next are the same number.
class Axis {
public:
    /// `count` cells of one size, upward from `lower`. Throws ReadError when no such
    /// cells can be told apart in doubles; so does Tensor.
    static Axis Regular(double lower, double size, std::int64_t count);
    /// Cells between neighbours of `edges`, which ascend.
    static Axis Tensor(std::vector<double> edges);
    /// Cells of the given widths, upward from 0; regular when the widths are equal
    /// within 1e-9 of themselves.
    static Axis FromWidths(const std::vector<double>& widths);

    std::int64_t Count() const { return count_; }
    bool IsRegular() const { return edges_.empty(); }
    double MinimumSize() const { return minimum_size_; }
    double MaximumSize() const { return maximum_size_; }

    double Lower(std::int64_t cell) const;
    double Upper(std::int64_t cell) const { return Lower(cell + 1); }

    /// The cell that holds `x`: of two that share a face the upper, on the last face
    /// the last cell, -1 outside and for NaN. Takes constant time on a regular axis
    /// but close to a face, else the logarithm of the count.
    std::int64_t CellOf(double x) const;

private:
    Axis() = default;
    void CheckEnds() const;

    double lower_ = 0.0;
    double size_ = 0.0;
    std::int64_t count_ = 0;
    double minimum_size_ = 0.0;
    double maximum_size_ = 0.0;
    // One more than cells; empty for a regular axis.
    std::vector<double> edges_;
};

class LatticeGeometry final : public Geometry {
public:
    /// The product of the three counts fits 63 bits.
    LatticeGeometry(Axis x, Axis y, Axis z, const CellOrder& order);

    std::int64_t NBlocks() const override { return numbering_.NCells(); }
    zol::geometry::Extent BlockExtent(std::int64_t block) override;
    std::int64_t Find(const zol::geometry::Coord3D& point) override;
    const std::array<Axis, 3>* Axes() const override { return &axes_; }
    const CellNumbering* Numbering() const override { return &numbering_; }
    Cell CellOf(std::int64_t block) override { return numbering_.CellAt(block); }

private:
    std::array<Axis, 3> axes_;
    CellNumbering numbering_;
};

/// What a model says of the lattice that three axes make. Each count fits 31 bits.
SchemaFacts lattice_facts(const Axis& x, const Axis& y, const Axis& z);

}  // namespace zol::engine::block
