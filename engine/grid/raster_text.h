// Text rasters, looked at ahead of GDAL's readers: those take a prefix of a text for a
// number, 0 for a text that has none, and stop to look when they have enough values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace zol::engine::grid {

/// Reads up to `count` bytes at `offset`; fewer only at the end of the file.
using ReadBytes = std::function<std::size_t(std::uint64_t offset, char* to, std::size_t count)>;

/// Refuses ESRI and GRASS ASCII grids whose header leaves something out or has no number
/// where one belongs. Says nothing of other files. Throws ReadError.
void check_text_header(const ReadBytes& read);

/// What GDAL made of a text raster.
struct TextRaster {
    /// GDAL's name of the format.
    std::string_view format;
    std::int32_t columns = 0;
    std::int32_t rows = 0;
    /// True when GDAL holds the values as 32-bit whole numbers.
    bool is_whole = false;
};

/// Reads a text raster from end to end and refuses it unless its values are numbers, and
/// just as many as its header says. Says nothing of formats that are no text, or not one
/// whose values stand free between blanks. Throws ReadError.
void check_text_values(const ReadBytes& read, const TextRaster& raster);

}  // namespace zol::engine::grid
