// Which block stands in a cell of a lattice, for rows in any order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zol::engine::block {

/// A map from cell number to block number, both counting from 0, in constant time.
///
/// Nothing is stored as long as cell i holds block i, which lasts to the end for a
/// full lattice in its own order. Otherwise it takes 4 bytes a cell in a lattice
/// of at most about eight cells a block, and 16 to 32 bytes a block in an emptier
/// one. Searches may run in several threads once all blocks are inserted.
class CellIndex {
public:
    /// For a lattice of `n_cells` cells in which at most `n_blocks` blocks will be
    /// put.
    CellIndex(std::uint64_t n_cells, std::uint32_t n_blocks);

    /// Puts a block in a cell. Where one stands already it stays, and the new one
    /// counts as a duplicate. `cell` is below n_cells, `block` below n_blocks, and
    /// no block is put twice.
    void Insert(std::uint64_t cell, std::uint32_t block);

    /// The block in a cell, or -1. A number past the last cell is an empty cell.
    std::int64_t Find(std::uint64_t cell) const;

    /// How many blocks found their cell taken.
    std::uint64_t Duplicates() const { return duplicates_; }

    /// Bytes held beside the object itself.
    std::size_t MemoryBytes() const;

private:
    enum class Form {
        /// Cell i holds block i for every i below in_order_; other cells are empty.
        InOrder,
        /// blocks_ has an entry for each cell.
        Dense,
        /// blocks_ and cells_ are the slots of a hash table with linear probing.
        Hashed
    };

    void LeaveOrder();
    void Store(std::uint64_t cell, std::uint32_t block);
    /// The slot that holds a cell, or the empty one where it would stand.
    std::size_t SlotOf(std::uint64_t cell) const;

    std::uint64_t n_cells_;
    std::uint32_t n_blocks_;
    std::uint64_t duplicates_ = 0;
    Form form_ = Form::InOrder;
    std::uint32_t in_order_ = 0;
    std::uint64_t seed_ = 0;
    std::vector<std::uint32_t> blocks_;
    std::vector<std::uint64_t> cells_;
};

}  // namespace zol::engine::block
