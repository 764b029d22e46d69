// From the ids that a file gives its points to their indices.
//
// Ids are mostly counted on from 0 or 1, but may leave gaps and be any number of 64 bits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace zol::engine {

class PointIds {
public:
    /// False when the id is given already.
    bool Add(std::int64_t id, std::int32_t point) {
        if (!IsNear(id)) return far_.emplace(id, point).second;
        // One that was far when it came may be near by now.
        if (!far_.empty() && far_.contains(id)) return false;
        const auto at = static_cast<std::size_t>(id);
        if (at >= near_.size()) near_.resize(at + 1, kNone);
        if (near_[at] != kNone) return false;
        near_[at] = point;
        ++count_;
        return true;
    }

    std::optional<std::int32_t> Find(std::int64_t id) const {
        if (id >= 0 && static_cast<std::size_t>(id) < near_.size() &&
            near_[static_cast<std::size_t>(id)] != kNone) {
            return near_[static_cast<std::size_t>(id)];
        }
        const auto found = far_.find(id);
        if (found == far_.end()) return std::nullopt;
        return found->second;
    }

    void Clear() {
        near_.clear();
        far_.clear();
        count_ = 0;
    }

private:
    static constexpr std::int32_t kNone = -1;

    // Whether a list up to the id is worth its memory.
    bool IsNear(std::int64_t id) const {
        constexpr std::int64_t kAlways = 65536;
        return id >= 0 && id / 2 < count_ + kAlways;
    }

    std::vector<std::int32_t> near_;
    std::unordered_map<std::int64_t, std::int32_t> far_;
    std::int64_t count_ = 0;
};

}  // namespace zol::engine
