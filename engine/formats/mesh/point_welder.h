// Merges points of the same coordinates while a mesh is read whose format repeats them at
// each triangle.
//
// Open addressing over 32-bit slots, so that reading needs little more memory than the mesh
// itself. A slot holds the number of a point and, in the bits that numbers do not need, a
// part of its hash: nearly every point that is compared is the one that is looked for.
//
// Coordinates come from files that anybody may have written. The hash is strongly universal
// under a secret key (Lemire and Kaser, "Strongly universal string hashing is fast", 2014),
// so that no file can be made whose points fall on one slot.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engine/formats/growing_array.h"
#include "engine/formats/mesh/mesh_data.h"

namespace zol::engine {

class PointWelder {
public:
    /// Puts each distinct point behind `points`, which is empty and outlives this, in the order
    /// in which they occur first. At most `most` will be asked for; `expected` of them
    /// distinct, which may be wrong.
    PointWelder(GrowingArray<MeshPoint>& points, std::uint64_t most, std::uint64_t expected);

    /// For points without -0, which is another bit pattern than the 0 that it equals.
    std::uint32_t HashOf(const MeshPoint& point) const {
        std::uint64_t sum = key_[0];
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const auto bits = std::bit_cast<std::uint64_t>(point[axis]);
            sum += key_[1 + 2 * axis] * (bits & 0xFFFFFFFFU) + key_[2 + 2 * axis] * (bits >> 32U);
        }
        // One to one from here on. Without it points of a lattice make long runs of slots.
        auto hash = static_cast<std::uint32_t>(sum >> 32U);
        hash = (hash ^ (hash >> 16U)) * 0x9E3779B1U;
        return hash ^ (hash >> 15U);
    }

    /// Fetches what Number will look at, while others are still looked for.
    void Prefetch(std::uint32_t hash) const { __builtin_prefetch(&slots_[SlotOf(hash)]); }

    /// The number of the point with this hash; it is added when it is new. Throws ReadError
    /// for more points than 32 bits count.
    std::int32_t Number(const MeshPoint& point, std::uint32_t hash) {
        std::size_t slot = SlotOf(hash);
        for (std::uint32_t held = slots_[slot]; held != kFree; held = slots_[slot]) {
            if ((held & ~number_mask_) == TagOf(hash)) {
                const std::uint32_t number = (held & number_mask_) - 1;
                if (points_[number] == point) return static_cast<std::int32_t>(number);
            }
            slot = (slot + 1) & slot_mask_;
        }
        return Add(point, hash, slot);
    }

private:
    static constexpr std::uint32_t kFree = 0;

    std::size_t SlotOf(std::uint32_t hash) const { return hash >> slot_shift_; }
    std::uint32_t TagOf(std::uint32_t hash) const { return hash << number_bits_; }
    void SetSlots(std::size_t count);
    void Grow();
    std::int32_t Add(const MeshPoint& point, std::uint32_t hash, std::size_t slot);

    GrowingArray<MeshPoint>& points_;
    std::array<std::uint64_t, 7> key_;
    unsigned number_bits_;
    std::uint32_t number_mask_;
    /// A number and 1, so that no slot that is taken looks free.
    std::vector<std::uint32_t> slots_;
    std::size_t slot_mask_ = 0;
    unsigned slot_shift_ = 0;
};

}  // namespace zol::engine
