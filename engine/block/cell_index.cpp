#include "engine/block/cell_index.h"

#include <bit>
#include <cassert>
#include <limits>

namespace zol::engine::block {

namespace {

// A block number is below n_blocks, which is at most this, so it is never one.
constexpr std::uint32_t kEmpty = std::numeric_limits<std::uint32_t>::max();

// Up to this many cells a block the array costs no more than the hash table can.
constexpr std::uint64_t kDenseCellsPerBlock = 8;
constexpr std::uint64_t kDenseCellsAlways = 1024;

bool is_dense(std::uint64_t n_cells, std::uint32_t n_blocks) {
    return n_cells <= kDenseCellsPerBlock * n_blocks + kDenseCellsAlways;
}

// At most three slots in four are taken.
std::size_t slot_count(std::uint32_t n_blocks) {
    const std::uint64_t blocks = n_blocks;
    return std::bit_ceil(blocks + blocks / 3 + 1);
}

// Neighbouring cells come far apart, and each bit of a cell reaches the low bits.
std::uint64_t mixed(std::uint64_t bits) {
    bits = (bits ^ bits >> 32) * 0x9e3779b97f4a7c15U;
    bits = (bits ^ bits >> 29) * 0xd1342543de82ef95U;
    return bits ^ bits >> 32;
}

}  // namespace

CellIndex::CellIndex(std::uint64_t n_cells, std::uint32_t n_blocks)
    : n_cells_(n_cells), n_blocks_(n_blocks) {}

void CellIndex::Insert(std::uint64_t cell, std::uint32_t block) {
    assert(cell < n_cells_ && block < n_blocks_);
    if (form_ == Form::InOrder) {
        if (cell == in_order_ && block == in_order_) {
            ++in_order_;
            return;
        }
        if (cell < in_order_) {
            ++duplicates_;
            return;
        }
        LeaveOrder();
    }
    Store(cell, block);
}

void CellIndex::LeaveOrder() {
    if (is_dense(n_cells_, n_blocks_)) {
        form_ = Form::Dense;
        blocks_.assign(static_cast<std::size_t>(n_cells_), kEmpty);
    } else {
        form_ = Form::Hashed;
        blocks_.assign(slot_count(n_blocks_), kEmpty);
        cells_.resize(blocks_.size());
        // An address differs from run to run, so that no file can be made whose
        // cells all fall on one slot.
        seed_ = mixed(reinterpret_cast<std::uintptr_t>(blocks_.data()));
    }
    for (std::uint32_t block = 0; block < in_order_; ++block) Store(block, block);
}

void CellIndex::Store(std::uint64_t cell, std::uint32_t block) {
    const std::size_t slot = SlotOf(cell);
    if (blocks_[slot] != kEmpty) {
        ++duplicates_;
        return;
    }
    blocks_[slot] = block;
    if (form_ == Form::Hashed) cells_[slot] = cell;
}

std::size_t CellIndex::SlotOf(std::uint64_t cell) const {
    if (form_ == Form::Dense) return static_cast<std::size_t>(cell);
    const std::size_t mask = blocks_.size() - 1;
    std::size_t slot = static_cast<std::size_t>(mixed(cell ^ seed_)) & mask;
    while (blocks_[slot] != kEmpty && cells_[slot] != cell) slot = (slot + 1) & mask;
    return slot;
}

std::int64_t CellIndex::Find(std::uint64_t cell) const {
    if (form_ == Form::InOrder) return cell < in_order_ ? static_cast<std::int64_t>(cell) : -1;
    if (cell >= n_cells_) return -1;
    const std::uint32_t block = blocks_[SlotOf(cell)];
    return block == kEmpty ? -1 : static_cast<std::int64_t>(block);
}

std::size_t CellIndex::MemoryBytes() const {
    return blocks_.capacity() * sizeof(std::uint32_t) + cells_.capacity() * sizeof(std::uint64_t);
}

}  // namespace zol::engine::block
