#include "engine/formats/byte_classes.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace zol::engine {

namespace {

void classify_with_any(const char* at, std::size_t count, CellSyntax syntax, ByteClasses* to) {
    for (std::size_t step = 0; step < count; ++step, at += kClassedBytes) {
        ByteClasses classes;
        for (std::size_t i = 0; i < kClassedBytes; ++i) {
            const char c = at[i];
            const auto bit = [i](bool is) { return static_cast<std::uint64_t>(is) << i; };
            classes.separators |= bit(c == syntax.delimiter || c == syntax.row_end);
            classes.row_ends |= bit(c == syntax.row_end);
            classes.digits |= bit(c >= '0' && c <= '9');
            classes.points |= bit(c == syntax.point);
            classes.minuses |= bit(c == '-');
            classes.returns |= bit(c == '\r');
        }
        to[step] = classes;
    }
}

#if defined(__x86_64__)

// Part of every processor of this family.
void classify_with_sse2(const char* at, std::size_t count, CellSyntax syntax, ByteClasses* to) {
    struct Bytes {
        __m128i part[4];
    };
    const auto bits = [](const Bytes& hits) {
        std::uint64_t mask = 0;
        for (int i = 0; i < 4; ++i) {
            const auto part = static_cast<std::uint32_t>(_mm_movemask_epi8(hits.part[i]));
            mask |= static_cast<std::uint64_t>(part) << (16 * i);
        }
        return mask;
    };
    const auto equal = [&](const Bytes& bytes, char wanted) {
        Bytes hits;
        for (int i = 0; i < 4; ++i) {
            hits.part[i] = _mm_cmpeq_epi8(bytes.part[i], _mm_set1_epi8(wanted));
        }
        return bits(hits);
    };
    const auto digits = [&](const Bytes& bytes) {
        Bytes hits;
        for (int i = 0; i < 4; ++i) {
            const __m128i above_zero = _mm_sub_epi8(bytes.part[i], _mm_set1_epi8('0'));
            hits.part[i] = _mm_cmpeq_epi8(_mm_min_epu8(above_zero, _mm_set1_epi8(9)), above_zero);
        }
        return bits(hits);
    };
    for (std::size_t step = 0; step < count; ++step, at += kClassedBytes) {
        const auto* const parts = reinterpret_cast<const __m128i*>(at);
        const Bytes bytes{{_mm_loadu_si128(parts), _mm_loadu_si128(parts + 1),
                           _mm_loadu_si128(parts + 2), _mm_loadu_si128(parts + 3)}};
        const std::uint64_t row_ends = equal(bytes, syntax.row_end);
        to[step] = {equal(bytes, syntax.delimiter) | row_ends,
                    row_ends,
                    digits(bytes),
                    equal(bytes, syntax.point),
                    equal(bytes, '-'),
                    equal(bytes, '\r')};
    }
}

// Lambdas have the instructions of no function but their own, so these stand alone.
struct WideBytes {
    __m256i low;
    __m256i high;
};

[[gnu::target("avx2")]] inline std::uint64_t wide_bits(__m256i low, __m256i high) {
    const auto below = static_cast<std::uint32_t>(_mm256_movemask_epi8(low));
    const auto above = static_cast<std::uint32_t>(_mm256_movemask_epi8(high));
    return below | static_cast<std::uint64_t>(above) << 32;
}

[[gnu::target("avx2")]] inline std::uint64_t wide_equal(const WideBytes& bytes, char wanted) {
    const __m256i same = _mm256_set1_epi8(wanted);
    return wide_bits(_mm256_cmpeq_epi8(bytes.low, same), _mm256_cmpeq_epi8(bytes.high, same));
}

[[gnu::target("avx2")]] inline __m256i wide_is_digit(__m256i bytes) {
    const __m256i above_zero = _mm256_sub_epi8(bytes, _mm256_set1_epi8('0'));
    return _mm256_cmpeq_epi8(_mm256_min_epu8(above_zero, _mm256_set1_epi8(9)), above_zero);
}

[[gnu::target("avx2")]] void classify_with_avx2(const char* at, std::size_t count,
                                                CellSyntax syntax, ByteClasses* to) {
    for (std::size_t step = 0; step < count; ++step, at += kClassedBytes) {
        const auto* const halves = reinterpret_cast<const __m256i*>(at);
        const WideBytes bytes{_mm256_loadu_si256(halves), _mm256_loadu_si256(halves + 1)};
        const std::uint64_t row_ends = wide_equal(bytes, syntax.row_end);
        to[step] = {wide_equal(bytes, syntax.delimiter) | row_ends,
                    row_ends,
                    wide_bits(wide_is_digit(bytes.low), wide_is_digit(bytes.high)),
                    wide_equal(bytes, syntax.point),
                    wide_equal(bytes, '-'),
                    wide_equal(bytes, '\r')};
    }
}

#endif

}  // namespace

#if defined(__x86_64__)

bool has_instructions(Instructions instructions) {
    return instructions != Instructions::Avx2 ||
           (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
            __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt"));
}

Instructions best_instructions() {
    static const Instructions best =
        has_instructions(Instructions::Avx2) ? Instructions::Avx2 : Instructions::Sse2;
    return best;
}

void classify_bytes(const char* at, std::size_t count, CellSyntax syntax, Instructions instructions,
                    ByteClasses* to) {
    switch (instructions) {
        case Instructions::Any:
            return classify_with_any(at, count, syntax, to);
        case Instructions::Sse2:
            return classify_with_sse2(at, count, syntax, to);
        case Instructions::Avx2:
            return classify_with_avx2(at, count, syntax, to);
    }
}

#else

bool has_instructions(Instructions instructions) {
    return instructions == Instructions::Any;
}

Instructions best_instructions() {
    return Instructions::Any;
}

void classify_bytes(const char* at, std::size_t count, CellSyntax syntax,
                    Instructions /*instructions*/, ByteClasses* to) {
    classify_with_any(at, count, syntax, to);
}

#endif

}  // namespace zol::engine
