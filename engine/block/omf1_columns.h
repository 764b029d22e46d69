// Columns over the arrays of an OMF 1 file. What can be checked without
// decompressing is checked when a column is made; values are read at first use.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "engine/block/variable.h"
#include "engine/formats/file.h"
#include "engine/formats/json.h"
#include "engine/formats/lazy.h"
#include "engine/formats/omf1_file.h"

namespace zol::engine::block {

/// Makes the columns of one element. All operations take the value that refers to an
/// array, and throw ReadError when the array can't have one row for each block.
class Omf1Columns {
public:
    template <typename T>
    using SharedItems = std::shared_ptr<Lazy<std::unique_ptr<T[]>>>;

    /// `document` is of `file` and outlives this object, but the columns need only the file.
    Omf1Columns(std::shared_ptr<const File> file, const Omf1Document& document,
                std::int64_t n_blocks);

    struct Numbers {
        Storage storage = Storage::Double;
        std::vector<std::unique_ptr<Column>> components;
    };
    /// Numbers as they are, `width` to a block. Columns over one array share its values.
    Numbers MakeNumbers(const JsonValue& reference, std::string_view array_class,
                        std::size_t width);
    /// Indices into legends; -1 and NaN are missing.
    std::unique_ptr<Column> MakeCodes(const JsonValue& reference);
    /// Texts "#RRGGBBFF".
    std::unique_ptr<Column> MakeColours(const JsonValue& reference);
    /// Texts of an inline list.
    std::unique_ptr<Column> MakeTexts(const JsonValue& reference, std::string_view array_class);

private:
    Omf1Blob BlobOfRows(const JsonValue& reference, std::string_view array_class,
                        std::size_t width) const;
    template <typename T>
    SharedItems<T> Items(const Omf1Blob& blob, std::size_t width) const;

    std::shared_ptr<const File> file_;
    const Omf1Document* document_;
    std::size_t n_blocks_;
    std::unordered_map<std::string, SharedItems<double>> doubles_;
    std::unordered_map<std::string, SharedItems<std::int64_t>> integers_;
    // Inline lists whose items were found good, by UUID.
    std::unordered_set<std::string> good_lists_;
};

}  // namespace zol::engine::block
