// From the ids that a file gives its points to their indices.
//
// Ids are mostly counted on from somewhere: those are the places of a list. Others may leave
// gaps of any size; as long as they rise, they are a sorted list, which takes half the memory
// of a table of hashes.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "engine/formats/growing_array.h"

namespace zol::engine {

class PointIds {
public:
    /// False when the id is given already.
    bool Add(std::int64_t id, std::int32_t point) {
        if (is_empty_ && (id < 0 || id >= kAlways)) first_ = id;
        is_empty_ = false;
        if (!IsNear(id)) return AddFar(id, point);
        // One that was far when it came may be near by now.
        if (FindFar(id)) return false;
        const std::size_t at = Place(id);
        if (at >= near_.size()) near_.resize(at + 1, kNone);
        if (near_[at] != kNone) return false;
        near_[at] = point;
        ++count_;
        return true;
    }

    std::optional<std::int32_t> Find(std::int64_t id) const {
        const std::size_t at = Place(id);
        if (at < near_.size() && near_[at] != kNone) return near_[at];
        return FindFar(id);
    }

    void Clear() { *this = PointIds(); }

private:
    static constexpr std::int32_t kNone = -1;
    static constexpr std::int64_t kAlways = 65536;

    // In the list of near ones; ids before the first wrap to places beyond any list.
    std::size_t Place(std::int64_t id) const {
        return static_cast<std::uint64_t>(id) - static_cast<std::uint64_t>(first_);
    }

    // Whether a list up to the id is worth its memory.
    bool IsNear(std::int64_t id) const { return Place(id) / 2 < count_ + std::size_t{kAlways}; }

    bool AddFar(std::int64_t id, std::int32_t point) {
        if (rising_.IsEmpty() || rising_[rising_.Size() - 1] < id) {
            if (strays_.contains(id)) return false;
            rising_.Add(id);
            rising_points_.Add(point);
            return true;
        }
        return !FindFar(id) && strays_.emplace(id, point).second;
    }

    std::optional<std::int32_t> FindFar(std::int64_t id) const {
        const auto ids = rising_.View();
        const auto at = std::lower_bound(ids.begin(), ids.end(), id);
        if (at != ids.end() && *at == id) {
            return rising_points_[static_cast<std::size_t>(at - ids.begin())];
        }
        if (strays_.empty()) return std::nullopt;
        const auto found = strays_.find(id);
        if (found == strays_.end()) return std::nullopt;
        return found->second;
    }

    bool is_empty_ = true;
    // The id of the first place.
    std::int64_t first_ = 0;
    std::vector<std::int32_t> near_;
    std::size_t count_ = 0;
    GrowingArray<std::int64_t> rising_;
    GrowingArray<std::int32_t> rising_points_;
    // Far ones that came behind a greater one.
    std::unordered_map<std::int64_t, std::int32_t> strays_;
};

}  // namespace zol::engine
