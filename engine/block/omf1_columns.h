// Columns over the arrays of an OMF 1 file. What can be checked without
// decompressing is checked when a column is made; values are read at first use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "engine/block/variable.h"
#include "engine/formats/file.h"
#include "engine/formats/json.h"
#include "engine/formats/lazy.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/omf1_values.h"

namespace zol::engine::block {

/// Makes the columns of one element. All operations take the value that refers to an
/// array, and throw ReadError when the array can't have one row for each block. Columns
/// of one kind over the same bytes of the file share their values, whichever array
/// objects they go through; an error in them names the data that came first.
class Omf1Columns {
public:
    template <typename T>
    using Shared = std::shared_ptr<Lazy<T>>;

    /// `document` is of `file` and outlives this object, but the columns need only the file.
    Omf1Columns(std::shared_ptr<const File> file, const Omf1Document& document,
                std::int64_t n_blocks);

    struct Numbers {
        Storage storage = Storage::Double;
        std::vector<std::unique_ptr<Column>> components;
    };
    /// Numbers as they are, `width` to a block.
    Numbers MakeNumbers(const std::string& data_name, const JsonValue& reference,
                        std::string_view array_class, std::size_t width);
    /// Indices into legends; -1 and NaN are missing.
    std::unique_ptr<Column> MakeCodes(const std::string& data_name, const JsonValue& reference);
    /// Texts "#RRGGBBFF".
    std::unique_ptr<Column> MakeColours(const std::string& data_name, const JsonValue& reference);
    /// Texts of an inline list.
    std::unique_ptr<Column> MakeTexts(const JsonValue& reference, std::string_view array_class);

private:
    // Start, length and type of a blob, and how many items are expected in it: array
    // objects of different widths may lay claim to the same bytes.
    using Place = std::tuple<std::uint64_t, std::uint64_t, Omf1Blob::Type, std::size_t>;
    template <typename T>
    using ByPlace = std::map<Place, Shared<T>>;
    template <typename T>
    using Decode = T (*)(const File& file, const Omf1Blob& blob, std::size_t count);

    Omf1Blob BlobOfRows(const std::string& data_name, const JsonValue& reference,
                        std::string_view array_class, std::size_t width) const;
    template <typename T>
    Shared<T> Values(ByPlace<T>& known, const Omf1Blob& blob, std::size_t count,
                     Decode<T> decode) const;

    std::shared_ptr<const File> file_;
    const Omf1Document* document_;
    std::size_t n_blocks_;
    ByPlace<std::unique_ptr<double[]>> doubles_;
    ByPlace<std::unique_ptr<std::int64_t[]>> integers_;
    ByPlace<std::vector<std::int32_t>> codes_;
    ByPlace<std::vector<Omf1Colour>> colours_;
    // Of inline lists whose items were found good, by UUID.
    std::unordered_map<std::string, Shared<Omf1Texts>> texts_;
};

}  // namespace zol::engine::block
