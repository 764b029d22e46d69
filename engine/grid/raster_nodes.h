// The values of a raster's band, block by block.
#pragma once

#include <gdal.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/grid/missing_rule.h"
#include "engine/grid/node_reader.h"
#include "engine/grid/raster_file.h"

namespace zol::engine::grid {

/// Blocks go from the file to the window without GDAL's own cache: that one is the whole
/// process's, and bounded by the host program's wishes.
class RasterNodes final : public NodeReader {
public:
    /// `reported_as` is the name in the diagnostics. Throws ReadError for a band that can't
    /// be read as numbers, or not in pieces of a bearable size. Inside a GdalScope.
    RasterNodes(std::unique_ptr<RasterFile> file, int band, std::string reported_as);

    Shape Block() const override;
    bool IsNarrow() const override;
    void Read(Window& window) override;

private:
    void ReadMissingRule();
    void ReadScale();
    void ReadBlock(std::int32_t block_column, std::int32_t block_row, Window& window,
                   const GdalScope& scope);
    void Unpack(const Area& part, const Area& block, Window& window) const;
    template <typename Raw>
    void UnpackTo(const Area& part, const Area& block, Window& window) const;
    template <typename Raw, typename Value>
    void UnpackAs(const Area& part, const Area& block, Value* values, Window& window) const;
    bool ReadMask(const Area& part, Window& window);
    bool Decode(std::int32_t block_column, std::int32_t block_row);
    bool DecodeAnew(std::int32_t block_column, std::int32_t block_row);
    void FlagUnreadable(const Area& part, Window& window, const GdalScope& scope);
    void DropFromCache();

    std::unique_ptr<RasterFile> file_;
    std::string reported_as_;
    GDALRasterBandH band_;
    /// The band that tells which cells count, where it is not the values that do.
    GDALRasterBandH mask_ = nullptr;
    GDALDataType type_;
    bool signed_bytes_ = false;
    Shape whole_;
    /// As stored: blocks at the edges stand over them.
    Shape block_;
    /// Text whose rows are found by reading the ones ahead of them. Those below `rows_found_`
    /// have been, and none from `first_lost_row_` on can be.
    bool found_in_order_ = false;
    std::int32_t rows_found_ = 0;
    std::int32_t first_lost_row_ = std::numeric_limits<std::int32_t>::max();
    MissingRule missing_;
    bool scaled_ = false;
    double scale_ = 1.0;
    double offset_ = 0.0;
    std::vector<std::byte> buffer_;
    /// Column and row, in blocks, of the block in the buffer.
    std::optional<Shape> in_buffer_;
    std::vector<std::uint8_t> mask_buffer_;
    std::size_t bytes_since_drop_ = 0;
    bool failure_reported_ = false;
};

}  // namespace zol::engine::grid
