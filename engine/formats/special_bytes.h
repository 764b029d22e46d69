// Finds a few byte values in a text, 64 bytes at a step.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zol::engine {

/// Walks over the places of up to three byte values, in their order. Reads only
/// inside [begin, end).
class SpecialBytes {
public:
    SpecialBytes(const char* begin, const char* end, char first, char second, char third)
        : base_(begin), end_(end), wanted_{first, second, third} {
        Load();
    }

    /// The next place, or the end of the text when there is none left.
    const char* Next() {
        while (mask_ == 0) {
            if (end_ - base_ <= kStep) {
                base_ = end_;
                return end_;
            }
            base_ += kStep;
            Load();
        }
        const char* place = base_ + std::countr_zero(mask_);
        mask_ &= mask_ - 1;
        return place;
    }

private:
    static constexpr std::ptrdiff_t kStep = 64;

    void Load() {
        const std::ptrdiff_t left = end_ - base_;
        if (left >= kStep) {
            mask_ = MaskOf(base_);
        } else if (left > 0) {
            // The last bytes are looked at in a copy: nothing is read past the text.
            std::array<char, kStep> tail{};
            std::memcpy(tail.data(), base_, static_cast<std::size_t>(left));
            mask_ = MaskOf(tail.data()) & ((std::uint64_t{1} << left) - 1);
        } else {
            mask_ = 0;
        }
    }

#if defined(__SSE2__)
    std::uint64_t MaskOf(const char* at) const {
        const __m128i first = _mm_set1_epi8(wanted_[0]);
        const __m128i second = _mm_set1_epi8(wanted_[1]);
        const __m128i third = _mm_set1_epi8(wanted_[2]);
        std::uint64_t mask = 0;
        for (int lane = 0; lane < 4; ++lane) {
            __m128i bytes;
            std::memcpy(&bytes, at + 16 * lane, sizeof bytes);
            const __m128i hit = _mm_or_si128(
                _mm_or_si128(_mm_cmpeq_epi8(bytes, first), _mm_cmpeq_epi8(bytes, second)),
                _mm_cmpeq_epi8(bytes, third));
            mask |= static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm_movemask_epi8(hit)))
                    << (16 * lane);
        }
        return mask;
    }
#else
    std::uint64_t MaskOf(const char* at) const {
        std::uint64_t mask = 0;
        for (int i = 0; i < kStep; ++i) {
            const bool hit = at[i] == wanted_[0] || at[i] == wanted_[1] || at[i] == wanted_[2];
            mask |= static_cast<std::uint64_t>(hit) << i;
        }
        return mask;
    }
#endif

    const char* base_;
    const char* end_;
    std::array<char, 3> wanted_;
    std::uint64_t mask_ = 0;
};

}  // namespace zol::engine
