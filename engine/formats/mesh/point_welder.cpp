#include "engine/formats/mesh/point_welder.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>

#include "engine/formats/mesh/mesh_limits.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

constexpr std::size_t kFewestSlots = 256;
// As many as a hash tells apart.
constexpr std::uint64_t kMostSlots = std::uint64_t{1} << 32;

using Key = std::array<std::uint64_t, 7>;

Key random_key() {
    Key key{};
    if (::getentropy(key.data(), sizeof key) == 0) return key;
    // Better than a constant that a file could be made for.
    auto state =
        static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    state ^= reinterpret_cast<std::uintptr_t>(&key);
    for (std::uint64_t& word : key) {
        // Steele, Lea and Flood, "Fast splittable pseudorandom number generators", 2014.
        state += 0x9E3779B97F4A7C15U;
        word = (state ^ (state >> 30U)) * 0xBF58476D1CE4E5B9U;
        word = (word ^ (word >> 27U)) * 0x94D049BB133111EBU;
        word ^= word >> 31U;
    }
    return key;
}

const Key& secret_key() {
    static const Key key = random_key();
    return key;
}

}  // namespace

PointWelder::PointWelder(GrowingArray<MeshPoint>& points, std::uint64_t most,
                         std::uint64_t expected)
    : points_(points), key_(secret_key()) {
    const auto numbers = static_cast<std::uint32_t>(std::min(most, kMostMeshElements));
    number_bits_ = static_cast<unsigned>(std::bit_width(numbers));
    number_mask_ = (std::uint32_t{1} << number_bits_) - 1;
    SetSlots(static_cast<std::size_t>(
        std::min(kMostSlots, std::bit_ceil(kFewestSlots + expected + expected / 2))));
}

void PointWelder::SetSlots(std::size_t count) {
    slots_.assign(count, kFree);
    slot_mask_ = count - 1;
    slot_shift_ = 32 - static_cast<unsigned>(std::countr_zero(count));
}

void PointWelder::Grow() {
    // The old slots go first: all that they tell is in the points.
    const std::size_t count = slots_.size();
    std::vector<std::uint32_t>().swap(slots_);
    SetSlots(2 * count);
    for (std::size_t number = 0; number < points_.Size(); ++number) {
        const std::uint32_t hash = HashOf(points_[number]);
        std::size_t slot = SlotOf(hash);
        while (slots_[slot] != kFree) slot = (slot + 1) & slot_mask_;
        slots_[slot] = TagOf(hash) | static_cast<std::uint32_t>(number + 1);
    }
}

std::int32_t PointWelder::Add(const MeshPoint& point, std::uint32_t hash, std::size_t slot) {
    const std::size_t number = points_.Size();
    if (number >= number_mask_) {
        throw ReadError("it has more than " + std::to_string(kMostMeshElements) + " points");
    }
    points_.Add(point);
    slots_[slot] = TagOf(hash) | static_cast<std::uint32_t>(number + 1);
    // At most two thirds full: longer runs cost more than the memory that they spare.
    if ((number + 1) * 3 > slots_.size() * 2 && slots_.size() < kMostSlots) Grow();
    return static_cast<std::int32_t>(number);
}

}  // namespace zol::engine
