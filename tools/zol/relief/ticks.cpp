#include "tools/zol/relief/ticks.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace zol::tool {

namespace {

// What rounding may take from an end of the axis, in steps.
constexpr double kSlack = 1e-9;

// From here on the multiples of a step are no longer all different doubles.
constexpr double kMostSteps = 1e15;

constexpr double kLongestPlain = 1e12;
constexpr double kFinestPlain = 1e-7;

/// The least of 1, 2 and 5 times a power of ten that is not below `least`, but for what
/// rounding adds to it.
double round_step(double least) {
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= least * (1 - 1e-9)) return factor * power;
    }
    return 10 * power;
}

std::string written(double value, std::chars_format format, int precision) {
    char text[64];
    const auto end = std::to_chars(std::begin(text), std::end(text), value, format, precision);
    return {text, end.ptr};
}

/// The multiples of `step` from `low` to `high`, as how many times the step.
struct Multiples {
    Multiples(double low, double high, double step)
        : first(std::ceil(low / step - kSlack)), last(std::floor(high / step + kSlack)) {}

    double Count() const { return last - first + 1; }
    bool AreTooLarge() const { return !(std::max(std::abs(first), std::abs(last)) <= kMostSteps); }

    double first;
    double last;
};

}  // namespace

Ticks ticks_between(double low, double high, int most) {
    const double span = high - low;
    if (!(span > 0) || !std::isfinite(span) || most < 1) return {};
    // From a step that is too fine to coarser ones, until few enough fit.
    Ticks ticks{round_step(span / (most + 1)), {}};
    Ticks finer;
    for (;;) {
        const Multiples found(low, high, ticks.step);
        if (!(ticks.step > 0) || found.AreTooLarge()) return {};
        if (found.Count() <= most) {
            // Adding 0 makes 0 of -0.
            const int count = static_cast<int>(found.Count());
            for (int n = 0; n < count; ++n) {
                ticks.values.push_back((found.first + n) * ticks.step + 0.0);
            }
            // Where one step has too many and the next has none, one of the many has to do.
            return ticks.values.empty() ? finer : ticks;
        }
        const double middle = found.first + std::floor((found.last - found.first) / 2);
        finer = {ticks.step, {middle * ticks.step + 0.0}};
        ticks.step = round_step(ticks.step * 1.5);
    }
}

std::string tick_text(double value, double step) {
    const double largest = std::max(std::abs(value), step);
    if (step >= kFinestPlain && largest < kLongestPlain) {
        const int decimals = std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
        return written(value, std::chars_format::fixed, decimals);
    }
    const double digits = value == 0 ? 1 : std::ceil(std::log10(largest / step) + 1e-9) + 1;
    return written(value, std::chars_format::general, static_cast<int>(std::min(digits, 17.0)));
}

}  // namespace zol::tool
