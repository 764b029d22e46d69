// What a value is as a number or a text.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

#include "support/ascii.h"
#include "support/floating_point.h"
#include "support/number_text.h"
#include "support/value_vector.h"
#include "support/variant.h"
#include "support/variant_traversal.h"

namespace {

using namespace zol::support;

[[gnu::noinline]] double real_of(std::int64_t number) {
    return static_cast<double>(number);
}

// To the nearest whole number, ties to even. Every step is exact, so that the rounding
// mode has no say.
double rounded(double number) {
    const double whole = std::trunc(number);
    const double rest = std::fabs(number - whole);
    const bool away = rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2.0) != 0.0);
    return away ? whole + std::copysign(1.0, number) : whole;
}

// Towards zero. What has no place in the integer, not-a-number too, gives its least
// value, as the processor's own conversion does.
template <typename Integer>
Integer whole_of(double number) {
    constexpr auto kLeast = std::numeric_limits<Integer>::min();
    // One past the greatest value is a power of two, and exact.
    constexpr double kLimit = -static_cast<double>(kLeast);
    const double whole = std::trunc(number);
    return whole >= -kLimit && whole < kLimit ? static_cast<Integer>(whole) : kLeast;
}

// Behind the decimals that say something, but the first decimal always stays. A text that
// is no plain number is left alone.
void cut_zeros(std::string& text, std::size_t first) {
    const std::size_t point = text.find('.', first);
    if (point == text.npos) {
        return;
    }
    std::size_t kept = point + 1;
    for (std::size_t i = point + 1; i < text.size(); ++i) {
        if (!is_digit(static_cast<unsigned char>(text[i]))) {
            return;
        }
        kept = text[i] != '0' ? i : kept;
    }
    text.resize(std::min(kept + 1, text.size()));
}

// No double has more decimals, and zeros behind them are cut.
constexpr int kMostDecimals = 1074;
constexpr int kUsualDecimals = 6;

void append_double(std::string& text, double number, int decimals) {
    const std::size_t first = text.size();
    append_fixed(text, number, decimals < 0 ? kUsualDecimals : std::min(decimals, kMostDecimals));
    cut_zeros(text, first);
}

/// Puts the texts of all values into one. The argument is for the outermost alone.
class TextOfValue {
public:
    explicit TextOfValue(int argument) : argument_(argument) {}

    void Begin(const MVariant& value, const VariantPlace& place) {
        if (place.index > 0) {
            const bool chosen = place.depth == 1 && place.key == nullptr && argument_ != -1;
            text_ += chosen ? static_cast<char>(argument_) : ' ';
        }
        if (place.key != nullptr) {
            text_ += place.key;
            text_ += "->";
        }
        switch (value.Kind()) {
            case MV_DOUBLE:
                append_double(text_, std::bit_cast<double>(value.Word()),
                              place.depth == 0 ? argument_ : -1);
                break;
            case MV_STRING:
                text_ += value.Text() != nullptr ? *value.Text() : std::string();
                break;
            case MV_INT:
            case MV_INT64:
                append_integer(text_, value.AsInt64());
                break;
            case MV_POINTER:
                append_pointer(text_, value.Word());
                break;
            default:
                break;
        }
    }
    void End(const MVariant&, const VariantPlace&) {}

    std::string& Text() { return text_; }

private:
    int argument_;
    std::string text_;
};

/// Given out by AsCString, and kept to the end of the process.
struct TextBuffer {
    std::size_t capacity = 1024;
    std::unique_ptr<char[]> bytes = std::make_unique_for_overwrite<char[]>(capacity);
};

}  // namespace

double MVariant::AsDouble() const {
    switch (Kind()) {
        case MV_DOUBLE:
            return std::bit_cast<double>(payload_);
        case MV_STRING:
            return Text() != nullptr ? read_double(*Text()) : 0.0;
        case MV_INT:
        case MV_INT64: {
            const UsualFloatingPoint usual;
            return real_of(AsInt64());
        }
        default:
            return 0.0;
    }
}

std::int64_t MVariant::AsInt64() const {
    switch (Kind()) {
        case MV_DOUBLE:
            return whole_of<std::int64_t>(rounded(AsDouble()));
        case MV_STRING:
            // Cut and not rounded, unlike AsInt.
            return whole_of<std::int64_t>(AsDouble());
        case MV_INT:
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(payload_));
        case MV_POINTER:
        case MV_INT64:
            return static_cast<std::int64_t>(payload_);
        default:
            return 0;
    }
}

std::int32_t MVariant::AsInt() const {
    switch (Kind()) {
        case MV_DOUBLE:
        case MV_STRING:
            return whole_of<std::int32_t>(rounded(AsDouble()));
        case MV_INT:
        case MV_POINTER:
        case MV_INT64:
            return static_cast<std::int32_t>(static_cast<std::uint32_t>(payload_));
        default:
            return 0;
    }
}

std::string MVariant::AsString(int argument) const {
    TextOfValue text(argument);
    traverse(*this, KeyOrder::kTable, text);
    return std::move(text.Text());
}

const char* MVariant::AsCString() const {
    static TextBuffer buffer;
    const std::string text = AsString();
    if (text.size() > buffer.capacity - 1) {
        const std::size_t capacity = text.size() * 3 / 2;
        buffer = {capacity, std::make_unique_for_overwrite<char[]>(capacity)};
    }
    std::memcpy(buffer.bytes.get(), text.c_str(), text.size() + 1);
    return buffer.bytes.get();
}
