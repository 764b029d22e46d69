// Exact sums, differences and products of doubles, as expansions: lists of doubles that
// do not overlap, least first, whose exact sum is the value.
//
// After Shewchuk, "Adaptive Precision Floating-Point Arithmetic and Fast Robust Geometric
// Predicates", Discrete & Computational Geometry 18 (1997): Two-Sum (theorem 7),
// Two-Product by Dekker's split (theorems 17 and 18), Linear-Expansion-Sum in its fast form
// (theorem 13), Scale-Expansion (theorem 19). Zero terms are dropped, so that numbers that
// need few terms cost little. Exact in round-to-nearest while no product leaves the range
// of doubles on either side.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace zol::engine::geometry {

/// A value and what it misses of the exact result.
struct Rounded {
    double value;
    double tail;
};

inline Rounded exact_sum(double a, double b) {
    const double sum = a + b;
    const double b_part = sum - a;
    const double a_part = sum - b_part;
    return {sum, (a - a_part) + (b - b_part)};
}

inline Rounded exact_difference(double a, double b) {
    return exact_sum(a, -b);
}

/// The same where |a| >= |b|.
inline Rounded exact_sum_of_ordered(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

/// Not by fma: where the processor has none, the library's one is many times slower.
inline Rounded exact_product(double a, double b) {
    constexpr double kSplitter = 134217729.0;  // 2^27 + 1
    const auto split = [](double number) {
        const double large = kSplitter * number;
        const double high = large - (large - number);
        return Rounded{high, number - high};
    };
    const double product = a * b;
    const Rounded left = split(a);
    const Rounded right = split(b);
    const double error =
        product - left.value * right.value - left.tail * right.value - left.value * right.tail;
    return {product, left.tail * right.tail - error};
}

/// At most `Capacity` terms, none of them zero; no terms are the number zero.
template <std::size_t Capacity>
class Expansion {
public:
    Expansion() = default;
    /// Of a sum or product and its tail.
    explicit Expansion(const Rounded& rounded) requires(Capacity >= 2) {
        Append(rounded.tail);
        Append(rounded.value);
    }

    std::size_t Size() const { return size_; }
    double operator[](std::size_t term) const { return terms_[term]; }

    /// Behind the others, which it must be greater than; a zero is dropped.
    void Append(double term) {
        if (term != 0.0) terms_[size_++] = term;
    }

    /// -1, 0 or 1: the greatest term decides.
    int Sign() const {
        if (size_ == 0) return 0;
        return terms_[size_ - 1] > 0.0 ? 1 : -1;
    }

    Expansion operator-() const {
        Expansion negative;
        for (std::size_t i = 0; i < size_; ++i) negative.Append(-terms_[i]);
        return negative;
    }

private:
    // Not set: only the first size_ terms are ever read.
    std::array<double, Capacity> terms_;
    std::size_t size_ = 0;
};

inline Expansion<2> difference(double a, double b) {
    return Expansion<2>(exact_difference(a, b));
}

template <std::size_t M, std::size_t N>
Expansion<M + N> operator+(const Expansion<M>& left, const Expansion<N>& right) {
    Expansion<M + N> sum;
    std::size_t i = 0;
    std::size_t j = 0;
    // The terms of both in order of size; what is carried on is never smaller than them.
    const auto next = [&] {
        const bool take_left =
            j == right.Size() || (i < left.Size() && std::fabs(left[i]) < std::fabs(right[j]));
        return take_left ? left[i++] : right[j++];
    };
    const std::size_t terms = left.Size() + right.Size();
    if (terms == 0) return sum;
    double carried = next();
    for (std::size_t taken = 1; taken < terms; ++taken) {
        const Rounded step = exact_sum(carried, next());
        sum.Append(step.tail);
        carried = step.value;
    }
    sum.Append(carried);
    return sum;
}

template <std::size_t M, std::size_t N>
Expansion<M + N> operator-(const Expansion<M>& left, const Expansion<N>& right) {
    return left + -right;
}

template <std::size_t N>
Expansion<2 * N> operator*(const Expansion<N>& expansion, double factor) {
    Expansion<2 * N> product;
    double carried = 0.0;
    for (std::size_t i = 0; i < expansion.Size(); ++i) {
        const Rounded term = exact_product(expansion[i], factor);
        const Rounded low = exact_sum(carried, term.tail);
        product.Append(low.tail);
        const Rounded high = exact_sum_of_ordered(term.value, low.value);
        product.Append(high.tail);
        carried = high.value;
    }
    product.Append(carried);
    return product;
}

template <std::size_t N>
Expansion<4 * N> operator*(const Expansion<N>& left, const Expansion<2>& right) {
    const auto part = [&](std::size_t term) {
        return term < right.Size() ? left * right[term] : Expansion<2 * N>();
    };
    return part(0) + part(1);
}

}  // namespace zol::engine::geometry
