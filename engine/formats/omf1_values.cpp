#include "engine/formats/omf1_values.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <type_traits>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

template <typename T>
std::int32_t code_of(T value, const Omf1Blob& blob) {
    if constexpr (std::is_same_v<T, double>) {
        if (std::isnan(value)) return kNoCode;
    }
    constexpr T kHighest = std::numeric_limits<std::int32_t>::max();
    if (value < T{-1} || value > kHighest ||
        static_cast<T>(static_cast<std::int32_t>(value)) != value) {
        throw ReadError(blob.name + " holds " + number_text(static_cast<double>(value)) +
                        ", which is no index into a legend");
    }
    return static_cast<std::int32_t>(value);
}

template <typename T>
std::vector<std::int32_t> codes_of(const File& file, const Omf1Blob& blob, std::size_t count) {
    const std::unique_ptr<T[]> items = inflate_items<T>(file, blob, count);
    std::vector<std::int32_t> codes(count);
    for (std::size_t i = 0; i < count; ++i) codes[i] = code_of(items[i], blob);
    return codes;
}

std::optional<Omf1Colour> item_colour(const JsonValue& item) {
    if (item.IsNull()) return std::nullopt;
    if (item.Size() != 3) item.Refuse("is no colour");
    return clipped({item.At(0).Whole(), item.At(1).Whole(), item.At(2).Whole()});
}

JsonValue inline_list(const JsonValue& array, std::size_t count) {
    const JsonValue list = array.Get("array");
    if (list.Size() != count) {
        list.Refuse("has " + std::to_string(list.Size()) + " items, " + std::to_string(count) +
                    " are expected");
    }
    return list;
}

std::string item_text(const JsonValue& item, bool colours) {
    if (colours) {
        const std::optional<Omf1Colour> colour = item_colour(item);
        return colour ? colour_text(*colour) : std::string();
    }
    return item.IsNull() ? std::string() : item.Text();
}

template <typename Visit>
void for_each_text(const JsonValue& array, std::size_t count, const Visit& visit) {
    const JsonValue list = inline_list(array, count);
    const bool colours = Omf1Document::ClassOf(array) == "ColorArray";
    for (std::size_t i = 0; i < count; ++i) visit(item_text(list.At(i), colours));
}

}  // namespace

std::vector<std::int32_t> read_codes(const File& file, const Omf1Blob& blob, std::size_t count) {
    return blob.type == Omf1Blob::Type::Int64 ? codes_of<std::int64_t>(file, blob, count)
                                              : codes_of<double>(file, blob, count);
}

std::optional<Omf1Colour> element_colour(const JsonValue& element) {
    const std::optional<JsonValue> value = element.Find("color");
    if (!value) return std::nullopt;
    Omf1Colour colour{};
    const std::vector<double> channels = value->Numbers(colour.size());
    for (std::size_t i = 0; i < colour.size(); ++i) {
        if (!(channels[i] >= 0.0 && channels[i] <= 255.0)) {
            value->At(i).Refuse("is not from 0 to 255");
        }
        colour[i] = static_cast<std::uint8_t>(std::lround(channels[i]));
    }
    return colour;
}

std::string colour_text(const Omf1Colour& colour) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "#";
    for (const std::uint8_t channel : colour) {
        text += kDigits[channel >> 4];
        text += kDigits[channel & 15];
    }
    return text + "FF";
}

Omf1Colour clipped(const std::array<std::int64_t, 3>& channels) {
    Omf1Colour colour{};
    std::transform(channels.begin(), channels.end(), colour.begin(), [](std::int64_t channel) {
        return static_cast<std::uint8_t>(std::clamp<std::int64_t>(channel, 0, 255));
    });
    return colour;
}

std::vector<Omf1Colour> read_colours(const File& file, const Omf1Blob& blob, std::size_t count) {
    const auto channels = inflate_items<std::int64_t>(file, blob, 3 * count);
    std::vector<Omf1Colour> colours(count);
    for (std::size_t i = 0; i < count; ++i) {
        colours[i] = clipped({channels[3 * i], channels[3 * i + 1], channels[3 * i + 2]});
    }
    return colours;
}

void check_texts(const JsonValue& array, std::size_t count) {
    for_each_text(array, count, [](const std::string&) {});
}

Omf1Texts read_texts(const JsonValue& array, std::size_t count) {
    Omf1Texts texts;
    for_each_text(array, count, [&](const std::string& text) {
        texts.bytes += text;
        texts.ends.push_back(texts.bytes.size());
    });
    return texts;
}

std::vector<std::optional<Omf1Colour>> read_listed_colours(const JsonValue& array) {
    const JsonValue list = array.Get("array");
    std::vector<std::optional<Omf1Colour>> colours(list.Size());
    for (std::size_t i = 0; i < colours.size(); ++i) colours[i] = item_colour(list.At(i));
    return colours;
}

Omf1Texts read_texts(const File& file, const std::string& uuid, std::size_t count) {
    if (!file.IsUnchanged()) throw ReadError("the file was changed after it was opened");
    const Omf1Document document(file);
    return read_texts(document.Object(uuid), count);
}

}  // namespace zol::engine
