#include "engine/formats/number_text.h"

#include <fast_float/fast_float.h>

#include <charconv>
#include <cmath>

namespace zol::engine {

namespace {

template <class Real>
std::string shortest(Real value) {
    // Left to itself to_chars writes 100000 as 1e+05, which is shorter but not
    // what a person expects of a block number or a coordinate.
    const Real magnitude = std::fabs(value);
    const bool plain =
        value == 0 || (magnitude >= static_cast<Real>(1e-5) && magnitude < static_cast<Real>(1e16));
    char text[64];
    const auto end = plain
                         ? std::to_chars(text, text + sizeof text, value, std::chars_format::fixed)
                         : std::to_chars(text, text + sizeof text, value);
    return std::string(text, end.ptr);
}

}  // namespace

std::string number_text(double value) {
    return std::isnan(value) ? "nan" : shortest(value);
}

std::string number_text(float value) {
    return std::isnan(value) ? "nan" : shortest(value);
}

bool parse_number(std::string_view text, double& value) {
    const char* first = text.data();
    const char* last = first + text.size();
    // A leading plus is common in Fortran text and unknown to from_chars.
    if (first != last && *first == '+') {
        ++first;
        if (first != last && (*first == '-' || *first == '+')) {
            return false;
        }
    }
    double parsed = 0.0;
    const auto end = fast_float::from_chars(first, last, parsed);
    if (end.ec != std::errc() || end.ptr != last || std::isnan(parsed)) {
        return false;
    }
    // A number that overflows comes back as infinity, which only the word may mean.
    if (std::isinf(parsed) && (*(last - 1) == '.' || (*(last - 1) >= '0' && *(last - 1) <= '9'))) {
        return false;
    }
    value = parsed;
    return true;
}

}  // namespace zol::engine
