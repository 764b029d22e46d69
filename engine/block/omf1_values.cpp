#include "engine/block/omf1_values.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <type_traits>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine::block {

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

std::uint8_t clip(std::int64_t channel) {
    return static_cast<std::uint8_t>(std::clamp<std::int64_t>(channel, 0, 255));
}

JsonValue inline_list(const JsonValue& array, std::size_t count) {
    const JsonValue list = array.Get("array");
    if (list.Size() != count) {
        list.Refuse("has " + std::to_string(list.Size()) + " items for " + std::to_string(count) +
                    " blocks");
    }
    return list;
}

std::string item_text(const JsonValue& item, bool colours) {
    if (item.IsNull()) return {};
    if (!colours) return item.Text();
    if (item.Size() != 3) item.Refuse("is no colour");
    return colour_text(
        {clip(item.At(0).Whole()), clip(item.At(1).Whole()), clip(item.At(2).Whole())});
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

std::string colour_text(const Colour& colour) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text = "#";
    for (const std::uint8_t channel : colour) {
        text += kDigits[channel >> 4];
        text += kDigits[channel & 15];
    }
    return text + "FF";
}

std::vector<Colour> read_colours(const File& file, const Omf1Blob& blob, std::size_t count) {
    const auto channels = inflate_items<std::int64_t>(file, blob, 3 * count);
    std::vector<Colour> colours(count);
    for (std::size_t i = 0; i < count; ++i) {
        colours[i] = {clip(channels[3 * i]), clip(channels[3 * i + 1]), clip(channels[3 * i + 2])};
    }
    return colours;
}

void check_texts(const JsonValue& array, std::size_t count) {
    for_each_text(array, count, [](const std::string&) {});
}

Texts read_texts(const File& file, const std::string& uuid, std::size_t count) {
    if (!file.IsUnchanged()) throw ReadError("the file was changed after it was opened");
    const Omf1Document document(file);
    Texts texts;
    texts.ends.reserve(count);
    for_each_text(document.Object(uuid), count, [&](const std::string& text) {
        texts.bytes += text;
        texts.ends.push_back(texts.bytes.size());
    });
    return texts;
}

}  // namespace zol::engine::block
