// Eight boxes side by side, that all are held against a ninth at one go.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zol::engine::geometry {

struct FloatBox {
    std::array<float, 3> lower;
    std::array<float, 3> upper;
};

class EightBoxes {
public:
    static constexpr std::size_t kBoxes = 8;

    /// All of them empty: they meet nothing.
    EightBoxes() {
        for (auto& bounds : lower_) bounds.fill(std::numeric_limits<float>::infinity());
        for (auto& bounds : upper_) bounds.fill(-std::numeric_limits<float>::infinity());
    }

    void Set(std::size_t box, const FloatBox& bounds) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            lower_[axis][box] = bounds.lower[axis];
            upper_[axis][box] = bounds.upper[axis];
        }
    }

    FloatBox Get(std::size_t box) const {
        return {{lower_[0][box], lower_[1][box], lower_[2][box]},
                {upper_[0][box], upper_[1][box], upper_[2][box]}};
    }

    /// The box around all of them.
    FloatBox Around() const {
        FloatBox around{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            around.lower[axis] = *std::min_element(lower_[axis].begin(), lower_[axis].end());
            around.upper[axis] = *std::max_element(upper_[axis].begin(), upper_[axis].end());
        }
        return around;
    }

    /// A bit for each of the boxes that has a point in common with `box`.
    std::uint32_t Meeting(const FloatBox& box) const {
#if defined(__SSE2__)
        return MeetingFour(0, box) | MeetingFour(4, box) << 4U;
#else
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < kBoxes; ++i) {
            bool meets = true;
            for (std::size_t axis = 0; axis < 3; ++axis) {
                meets = meets && lower_[axis][i] <= box.upper[axis] &&
                        upper_[axis][i] >= box.lower[axis];
            }
            bits |= (meets ? std::uint32_t{1} : 0U) << i;
        }
        return bits;
#endif
    }

private:
#if defined(__SSE2__)
    std::uint32_t MeetingFour(std::size_t first, const FloatBox& box) const {
        __m128 meets = _mm_castsi128_ps(_mm_set1_epi32(-1));
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const __m128 lower = _mm_loadu_ps(&lower_[axis][first]);
            const __m128 upper = _mm_loadu_ps(&upper_[axis][first]);
            meets = _mm_and_ps(meets, _mm_cmple_ps(lower, _mm_set1_ps(box.upper[axis])));
            meets = _mm_and_ps(meets, _mm_cmpge_ps(upper, _mm_set1_ps(box.lower[axis])));
        }
        return static_cast<std::uint32_t>(_mm_movemask_ps(meets));
    }
#endif

    std::array<std::array<float, kBoxes>, 3> lower_;
    std::array<std::array<float, kBoxes>, 3> upper_;
};

}  // namespace zol::engine::geometry
