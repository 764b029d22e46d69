#include "engine/formats/special_bytes.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zol::engine {

namespace {

constexpr std::size_t kStep = 64;

// A mask has a bit for each of 64 bytes: set where one of the wanted stands.
#if defined(__SSE2__)

[[gnu::always_inline]] inline std::uint64_t mask_of(const char* at,
                                                    const std::array<char, 3>& wanted) {
    const __m128i first = _mm_set1_epi8(wanted[0]);
    const __m128i second = _mm_set1_epi8(wanted[1]);
    const __m128i third = _mm_set1_epi8(wanted[2]);
    std::uint64_t mask = 0;
    for (int lane = 0; lane < 4; ++lane) {
        __m128i bytes;
        std::memcpy(&bytes, at + std::ptrdiff_t{16} * lane, sizeof bytes);
        const __m128i hit =
            _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(bytes, first), _mm_cmpeq_epi8(bytes, second)),
                         _mm_cmpeq_epi8(bytes, third));
        mask |= static_cast<std::uint64_t>(static_cast<std::uint32_t>(_mm_movemask_epi8(hit)))
                << (16 * lane);
    }
    return mask;
}

#else

[[gnu::always_inline]] inline std::uint64_t mask_of(const char* at,
                                                    const std::array<char, 3>& wanted) {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < kStep; ++i) {
        const bool hit = at[i] == wanted[0] || at[i] == wanted[1] || at[i] == wanted[2];
        mask |= static_cast<std::uint64_t>(hit) << i;
    }
    return mask;
}

#endif

// Counts the bits of a mask; the plainest processors have no instruction for it.
int count_of(std::uint64_t mask) {
    mask -= (mask >> 1) & 0x5555555555555555U;
    mask = (mask & 0x3333333333333333U) + ((mask >> 2) & 0x3333333333333333U);
    mask = (mask + (mask >> 4)) & 0x0F0F0F0F0F0F0F0FU;
    return static_cast<int>((mask * 0x0101010101010101U) >> 56);
}

// Writes the places of a mask in whole groups, whose surplus the next mask overwrites:
// one branch that is nearly always the same, instead of one for each place.
std::uint32_t* write_places(std::uint64_t mask, std::uint32_t base, std::uint32_t* to) {
    constexpr int kGroup = 8;
    const int count = count_of(mask);
    for (int done = 0; done < count; done += kGroup) {
        for (int i = 0; i < kGroup; ++i) {
            to[done + i] = base + static_cast<std::uint32_t>(std::countr_zero(mask));
            mask &= mask - 1;
        }
    }
    return to + count;
}

}  // namespace

std::size_t find_special_bytes(std::string_view text, const std::array<char, 3>& wanted,
                               std::vector<std::uint32_t>& places) {
    std::size_t found = 0;
    for (std::size_t base = 0; base < text.size(); base += kStep) {
        // Room for a full mask, its surplus and the end.
        if (places.size() < found + 2 * kStep) {
            places.resize(std::max(2 * places.size(), found + 2 * kStep));
        }
        std::uint64_t mask = 0;
        const std::size_t left = text.size() - base;
        if (left >= kStep) {
            mask = mask_of(text.data() + base, wanted);
        } else {
            // The last bytes are looked at in a copy: nothing is read past the text.
            std::array<char, kStep> tail{};
            std::memcpy(tail.data(), text.data() + base, left);
            mask = mask_of(tail.data(), wanted) & ((std::uint64_t{1} << left) - 1);
        }
        std::uint32_t* const end =
            write_places(mask, static_cast<std::uint32_t>(base), places.data() + found);
        found = static_cast<std::size_t>(end - places.data());
    }
    places.resize(std::max(places.size(), found + 1));
    places[found] = static_cast<std::uint32_t>(text.size());
    return found;
}

}  // namespace zol::engine
