// Decoding the arrays of an OMF 1 file, whole ones at a time, into the least memory
// that holds what a caller can ask for. All throw ReadError.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/formats/file.h"
#include "engine/formats/json.h"
#include "engine/formats/omf1_file.h"

namespace zol::engine {

/// Exactly `count` items of an array of T.
template <typename T>
std::unique_ptr<T[]> inflate_items(const File& file, const Omf1Blob& blob, std::size_t count) {
    auto items = std::make_unique_for_overwrite<T[]>(count);
    inflate_exactly(file, blob, items.get(), count * sizeof(T));
    return items;
}

inline constexpr std::int32_t kNoCode = -1;

/// Indices into legends, of either type of array; NaN is kNoCode.
std::vector<std::int32_t> read_codes(const File& file, const Omf1Blob& blob, std::size_t count);

/// Red, green, blue.
using Omf1Colour = std::array<std::uint8_t, 3>;

/// The colour that an element says of itself; nothing when it says none.
std::optional<Omf1Colour> element_colour(const JsonValue& element);

/// "#RRGGBBFF": colours of the format are opaque.
std::string colour_text(const Omf1Colour& colour);

/// Cut to 0 to 255.
Omf1Colour clipped(const std::array<std::int64_t, 3>& channels);

/// Colours of an array of whole numbers, cut to 0 to 255.
std::vector<Omf1Colour> read_colours(const File& file, const Omf1Blob& blob, std::size_t count);

/// Texts end to end: a string object each would cost more than most texts.
struct Omf1Texts {
    std::string At(std::size_t index) const {
        const std::size_t start = index == 0 ? 0 : ends[index - 1];
        return bytes.substr(start, ends[index] - start);
    }

    std::string bytes;
    /// Where each text ends in `bytes`.
    std::vector<std::size_t> ends;
};

/// Throws unless an array object holds an inline list of `count` items that fit its
/// class: texts, or colours. Null is a missing item of either.
void check_texts(const JsonValue& array, std::size_t count);

/// The inline list of an array object, as many items as `count`.
Omf1Texts read_texts(const JsonValue& array, std::size_t count);

/// The same of a list of colours; nothing for one that is missing.
std::vector<std::optional<Omf1Colour>> read_listed_colours(const JsonValue& array);

/// The inline list of the array object of a UUID, from a new reading of the JSON.
Omf1Texts read_texts(const File& file, const std::string& uuid, std::size_t count);

}  // namespace zol::engine
