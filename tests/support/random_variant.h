// Values of every kind, nested by chance; the same for the same state of the generator.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <string>

#include "support/variant.h"

namespace zol::testing_support {

/// Below `limit`.
inline int random_below(std::mt19937& random, int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
}

/// Any bytes but zero, with those that a writer may stumble over among them.
inline std::string random_text(std::mt19937& random) {
    static const std::string kHard = "\"\\\n\r\t *,=[]{}u0x-.\xff";
    std::string text;
    for (int left = random_below(random, 12); left > 0; --left) {
        text += random_below(random, 2) == 0 ? kHard[static_cast<std::size_t>(random_below(
                                                   random, static_cast<int>(kHard.size())))]
                                             : static_cast<char>(1 + random_below(random, 255));
    }
    return text;
}

/// Finite, of any size.
inline double random_double(std::mt19937& random) {
    const double digits = static_cast<double>(random()) - 2147483648.0;
    const int exponents[] = {-32, -20, -5, 0, 40, 900, -1060};
    return std::ldexp(digits, exponents[random_below(random, 7)]);
}

inline MVariant random_variant(std::mt19937& random, int most_depth = 5) {
    const auto word = std::uint64_t{random()} << 32 | random();
    switch (random_below(random, most_depth > 0 ? 10 : 6)) {
        case 0:
            return MVariant();
        case 1:
            return random_double(random);
        case 2:
            return random_text(random);
        case 3:
            return MVariant::OfWord(MV_INT, word);
        case 4:
            return MVariant::Pointer(word);
        case 5:
            return MVariant::OfWord(MV_INT64, word >> random_below(random, 64));
        case 6:
        case 7: {
            MVariant vector(MV_VECTOR);
            for (int left = random_below(random, 7); left > 0; --left) {
                vector[vector.Size()] = random_variant(random, most_depth - 1);
            }
            return vector;
        }
        default: {
            MVariant map(MV_MAP);
            for (int left = random_below(random, 7); left > 0; --left) {
                const std::string key = random_text(random);
                map[key] = random_variant(random, most_depth - 1);
            }
            return map;
        }
    }
}

}  // namespace zol::testing_support
