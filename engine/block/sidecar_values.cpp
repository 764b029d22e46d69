#include "engine/block/sidecar_values.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/formats/cell_reader.h"
#include "engine/formats/table_survey.h"

namespace zol::engine::block {

// One character, or none for null and false-like empty texts.
char read_character(const JsonValue& value) {
    const std::string text = value.Text();
    if (text.size() > 1) {
        value.Refuse("is " + shown(text) + ", one character is expected");
    }
    return text.empty() ? '\0' : text.front();
}

std::vector<std::string> read_texts(const JsonValue& list) {
    std::vector<std::string> all;
    for (std::size_t i = 0; i < list.Size(); ++i) {
        all.push_back(list.At(i).Text());
    }
    return all;
}

Triple read_triple(const JsonValue& value) {
    const std::vector<double> numbers = value.Numbers(3);
    if (!std::all_of(numbers.begin(), numbers.end(), [](double n) { return std::isfinite(n); })) {
        value.Refuse("is not three finite numbers");
    }
    return {numbers[0], numbers[1], numbers[2]};
}

geometry::Coord3D read_coordinates(const JsonValue& value) {
    const Triple numbers = read_triple(value);
    return {numbers[0], numbers[1], numbers[2]};
}

Triple read_sizes(const JsonValue& value) {
    const Triple numbers = read_triple(value);
    if (!std::all_of(numbers.begin(), numbers.end(), [](double n) { return n > 0; })) {
        value.Refuse("has a size that is not above 0");
    }
    return numbers;
}

Counts read_counts(const JsonValue& value) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    if (value.Size() != 3) {
        value.Refuse("is not a list of three counts");
    }
    Counts three{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        three[axis] = value.At(axis).Whole();
        if (three[axis] < 1 || three[axis] > kMost) {
            value.At(axis).Refuse("is not a count from 1 to " + std::to_string(kMost));
        }
    }
    return three;
}

std::array<double, 6> read_extent(const JsonValue& value) {
    const std::vector<double> numbers = value.Numbers(6);
    std::array<double, 6> six{};
    std::copy(numbers.begin(), numbers.end(), six.begin());
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!std::isfinite(six[axis]) || !std::isfinite(six[axis + 3]) ||
            !(six[axis] < six[axis + 3])) {
            value.Refuse("is not a lower corner and an upper corner above it");
        }
    }
    return six;
}

// A list numbers its texts from 0; an object has the codes as keys.
std::vector<Translation> read_translations(const JsonValue& value) {
    std::vector<Translation> all;
    if (value.IsList()) {
        for (std::size_t i = 0; i < value.Size(); ++i) {
            all.push_back({static_cast<std::int64_t>(i), value.At(i).Text()});
        }
        return all;
    }
    for (const JsonMember& member : value.Members()) {
        Decimal code;
        std::int64_t whole = 0;
        if (!read_decimal(member.key, '.', code) || !whole_of(code, whole)) {
            member.value.Refuse("has a key that is no whole number");
        }
        all.push_back({whole, member.value.Text()});
    }
    std::sort(all.begin(), all.end(),
              [](const Translation& a, const Translation& b) { return a.code < b.code; });
    return all;
}

}  // namespace zol::engine::block
