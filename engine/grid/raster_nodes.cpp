#include "engine/grid/raster_nodes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "engine/formats/diagnostics.h"
#include "engine/formats/read_error.h"

namespace zol::engine::grid {

namespace {

// A block is decoded in one piece. Larger ones are not written by anything but mishap.
constexpr std::int64_t kMostBlockBytes = std::int64_t{256} << 20;

// Bytes of blocks read before GDAL's cache is rid of what it came to hold of the raster in
// passing: masks, and bands that are stored between the cells of ours.
constexpr std::size_t kBytesToDrop = std::size_t{4} << 20;

// Surfer's own word for no data, and all that is not below it.
constexpr double kSurferBlank = 1.70141e38;

bool is_surfer(std::string_view driver) {
    return driver == "GSAG" || driver == "GSBG" || driver == "GS7BG";
}

/// The formats that GDAL reads by one reader, which takes a row of text for a block.
bool is_text_of_rows(std::string_view driver) {
    return driver == "AAIGrid" || driver == "GRASSASCIIGrid" || driver == "ISG";
}

bool is_floating(GDALDataType type) {
    return type == GDT_Float32 || type == GDT_Float64;
}

Area overlap(const Area& a, const Area& b) {
    Area part;
    part.column = std::max(a.column, b.column);
    part.row = std::max(a.row, b.row);
    part.columns = std::min(a.column + a.columns, b.column + b.columns) - part.column;
    part.rows = std::min(a.row + a.rows, b.row + b.rows) - part.row;
    return part;
}

std::size_t cell_in(const Area& area, std::int32_t column, std::int32_t row) {
    return static_cast<std::size_t>(row - area.row) * static_cast<std::size_t>(area.columns) +
           static_cast<std::size_t>(column - area.column);
}

/// The types that a block is unpacked from; GDAL has more in each version.
bool is_read(GDALDataType type) {
    constexpr std::array kRead = {GDT_Byte,   GDT_UInt16, GDT_Int16,   GDT_UInt32, GDT_Int32,
                                  GDT_UInt64, GDT_Int64,  GDT_Float32, GDT_Float64};
    return std::find(kRead.begin(), kRead.end(), type) != kRead.end();
}

}  // namespace

RasterNodes::RasterNodes(std::unique_ptr<RasterFile> file, int band, std::string reported_as)
    : file_(std::move(file)),
      reported_as_(std::move(reported_as)),
      band_(GDALGetRasterBand(file_->Dataset(), band)),
      type_(GDALGetRasterDataType(band_)),
      whole_{GDALGetRasterXSize(file_->Dataset()), GDALGetRasterYSize(file_->Dataset())} {
    if (!is_read(type_)) {
        throw ReadError(std::string("its values are of type ") + GDALGetDataTypeName(type_) +
                        ", not plain numbers");
    }
    GDALGetBlockSize(band_, &block_.columns, &block_.rows);
    // Where cells hold all bands side by side, GDAL decodes all bands of a block.
    const char* const layout =
        GDALGetMetadataItem(file_->Dataset(), "INTERLEAVE", "IMAGE_STRUCTURE");
    const bool decodes_all = layout != nullptr && std::string_view(layout) == "PIXEL";
    const std::int64_t bands = decodes_all ? GDALGetRasterCount(file_->Dataset()) : 1;
    const std::int64_t most_cells = kMostBlockBytes / bands / GDALGetDataTypeSizeBytes(type_);
    if (block_.columns < 1 || block_.rows < 1 || block_.columns > most_cells / block_.rows) {
        throw ReadError("it is stored in blocks of " + std::to_string(block_.columns) + " x " +
                        std::to_string(block_.rows) + " cells, more than is read in one piece");
    }
    const char* const pixels = GDALGetMetadataItem(band_, "PIXELTYPE", "IMAGE_STRUCTURE");
    signed_bytes_ =
        type_ == GDT_Byte && pixels != nullptr && std::string_view(pixels) == "SIGNEDBYTE";
    found_in_order_ = is_text_of_rows(file_->DriverName());
    ReadScale();
    ReadMissingRule();
}

void RasterNodes::ReadScale() {
    int has_scale = FALSE;
    int has_offset = FALSE;
    const double scale = GDALGetRasterScale(band_, &has_scale);
    const double offset = GDALGetRasterOffset(band_, &has_offset);
    scale_ = has_scale != FALSE ? scale : 1.0;
    offset_ = has_offset != FALSE ? offset : 0.0;
    if (!std::isfinite(scale_) || !std::isfinite(offset_)) {
        throw ReadError("the scale or the offset of its values is no number");
    }
    scaled_ = scale_ != 1.0 || offset_ != 0.0;
}

void RasterNodes::ReadMissingRule() {
    if (is_surfer(file_->DriverName())) {
        missing_.blank_from = kSurferBlank;
    }
    const int flags = GDALGetMaskFlags(band_);
    if ((flags & GMF_ALL_VALID) != 0) {
        return;
    }
    if ((flags & GMF_NODATA) == 0 || (flags & GMF_PER_DATASET) != 0) {
        // Beside it a value may stand for nothing too; GDAL's mask has only one of the two.
        mask_ = GDALGetMaskBand(band_);
    }
    int stated = FALSE;
    if (type_ == GDT_Int64) {
        missing_.whole =
            static_cast<std::uint64_t>(GDALGetRasterNoDataValueAsInt64(band_, &stated));
        missing_.has_whole = stated != FALSE;
    } else if (type_ == GDT_UInt64) {
        missing_.whole = GDALGetRasterNoDataValueAsUInt64(band_, &stated);
        missing_.has_whole = stated != FALSE;
    } else {
        const double code = GDALGetRasterNoDataValue(band_, &stated);
        if (stated == FALSE || std::isnan(code)) {
            return;
        }
        if (is_floating(type_)) {
            const bool fits = std::fabs(code) <= std::numeric_limits<float>::max();
            missing_.SetNear(type_ == GDT_Float32 && fits ? double{static_cast<float>(code)}
                                                          : code);
        } else {
            missing_.SetExact(code);
        }
    }
}

bool RasterNodes::IsNarrow() const {
    return !scaled_ &&
           (type_ == GDT_Byte || type_ == GDT_UInt16 || type_ == GDT_Int16 || type_ == GDT_Float32);
}

NodeReader::Shape RasterNodes::Block() const {
    return {std::min(block_.columns, whole_.columns), std::min(block_.rows, whole_.rows)};
}

void RasterNodes::Read(Window& window) {
    if (!file_->IsUnchanged()) {
        throw ReadError("the file was changed after it was opened");
    }
    const GdalScope scope(file_->Network());
    const Area& area = window.area;
    const std::int32_t last_column = (area.column + (area.columns - 1)) / block_.columns;
    const std::int32_t last_row = (area.row + (area.rows - 1)) / block_.rows;
    for (std::int32_t row = area.row / block_.rows; row <= last_row; ++row) {
        for (std::int32_t column = area.column / block_.columns; column <= last_column; ++column) {
            ReadBlock(column, row, window, scope);
        }
    }
    DropFromCache();
}

void RasterNodes::ReadBlock(std::int32_t block_column, std::int32_t block_row, Window& window,
                            const GdalScope& scope) {
    Area block{block_column * block_.columns, block_row * block_.rows, 0, 0};
    block.columns = std::min(block_.columns, whole_.columns - block.column);
    block.rows = std::min(block_.rows, whole_.rows - block.row);
    const Area part = overlap(block, window.area);

    // GDAL fills whole blocks, over the raster's edges too.
    const auto bytes = static_cast<std::size_t>(GDALGetDataTypeSizeBytes(type_));
    buffer_.resize(static_cast<std::size_t>(block_.columns) *
                   static_cast<std::size_t>(block_.rows) * bytes);
    if (!Decode(block_column, block_row) || !ReadMask(part, window)) {
        FlagUnreadable(part, window, scope);
        return;
    }
    Unpack(part, block, window);
    bytes_since_drop_ += buffer_.size();
    if (bytes_since_drop_ > kBytesToDrop) {
        DropFromCache();
    }
}

/// Reads a block into the buffer, unless it is there from last time: a block may be many
/// windows large.
bool RasterNodes::Decode(std::int32_t block_column, std::int32_t block_row) {
    const Shape block{block_column, block_row};
    if (in_buffer_ && in_buffer_->columns == block.columns && in_buffer_->rows == block.rows) {
        return true;
    }
    in_buffer_.reset();
    if (!DecodeAnew(block_column, block_row)) {
        return false;
    }
    in_buffer_ = block;
    return true;
}

bool RasterNodes::DecodeAnew(std::int32_t block_column, std::int32_t block_row) {
    const auto decode = [&](std::int32_t row) {
        return GDALReadBlock(band_, block_column, row, buffer_.data()) == CE_None;
    };
    if (!found_in_order_) {
        return decode(block_row);
    }
    // Asked for a row behind one that it can't find, GDAL looks for each of those between by
    // looking for all ahead of it: twice the work for every row more, for years soon.
    for (; rows_found_ < block_row && rows_found_ < first_lost_row_; ++rows_found_) {
        if (!decode(rows_found_)) {
            first_lost_row_ = rows_found_;
        }
    }
    if (block_row >= first_lost_row_) {
        return false;
    }
    if (!decode(block_row)) {
        first_lost_row_ = block_row;
        return false;
    }
    rows_found_ = std::max(rows_found_, block_row + 1);
    return true;
}

template <typename Raw, typename Value>
void RasterNodes::UnpackAs(const Area& part, const Area& block, Value* values,
                           Window& window) const {
    // GDAL wrote numbers of this type into the bytes.
    const auto* const cells = reinterpret_cast<const Raw*>(buffer_.data());
    // A copy, which no value that is written can change.
    const MissingRule missing = missing_;
    for (std::int32_t row = part.row; row < part.row + part.rows; ++row) {
        const Raw* const from =
            cells +
            static_cast<std::size_t>(row - block.row) * static_cast<std::size_t>(block_.columns) +
            static_cast<std::size_t>(part.column - block.column);
        const std::size_t start = cell_in(window.area, part.column, row);
        const auto count = static_cast<std::size_t>(part.columns);
        Value* const to = values + start;
        // As wide as the values, so that the compiler takes several at a time.
        std::uint32_t any_missing = 0;
        for (std::size_t i = 0; i < count; ++i) {
            to[i] = static_cast<Value>(from[i]);
            any_missing |= missing.IsMissing(from[i]) ? 1U : 0U;
        }
        if (scaled_) {
            for (std::size_t i = 0; i < count; ++i) {
                to[i] = static_cast<Value>(static_cast<double>(from[i]) * scale_ + offset_);
                if (!std::isfinite(to[i])) {
                    window.Flag(start + i, kMasked);
                }
            }
        }
        for (std::size_t i = 0; any_missing != 0 && i < count; ++i) {
            if (missing.IsMissing(from[i])) {
                // As stored, without the scale.
                to[i] = static_cast<Value>(from[i]);
                window.Flag(start + i, kMasked);
            }
        }
    }
}

template <typename Raw>
void RasterNodes::UnpackTo(const Area& part, const Area& block, Window& window) const {
    if (window.floats != nullptr) {
        UnpackAs<Raw>(part, block, window.floats, window);
    } else {
        UnpackAs<Raw>(part, block, window.doubles, window);
    }
}

void RasterNodes::Unpack(const Area& part, const Area& block, Window& window) const {
    switch (type_) {
        case GDT_Byte:
            return signed_bytes_ ? UnpackTo<std::int8_t>(part, block, window)
                                 : UnpackTo<std::uint8_t>(part, block, window);
        case GDT_UInt16:
            return UnpackTo<std::uint16_t>(part, block, window);
        case GDT_Int16:
            return UnpackTo<std::int16_t>(part, block, window);
        case GDT_UInt32:
            return UnpackTo<std::uint32_t>(part, block, window);
        case GDT_Int32:
            return UnpackTo<std::int32_t>(part, block, window);
        case GDT_UInt64:
            return UnpackTo<std::uint64_t>(part, block, window);
        case GDT_Int64:
            return UnpackTo<std::int64_t>(part, block, window);
        case GDT_Float32:
            return UnpackTo<float>(part, block, window);
        default:
            return UnpackTo<double>(part, block, window);
    }
}

bool RasterNodes::ReadMask(const Area& part, Window& window) {
    if (mask_ == nullptr) {
        return true;
    }
    mask_buffer_.resize(part.Cells());
    if (GDALRasterIO(mask_, GF_Read, part.column, part.row, part.columns, part.rows,
                     mask_buffer_.data(), part.columns, part.rows, GDT_Byte, 0, 0) != CE_None) {
        return false;
    }
    std::size_t at = 0;
    for (std::int32_t row = part.row; row < part.row + part.rows; ++row) {
        const std::size_t start = cell_in(window.area, part.column, row);
        for (std::size_t i = 0; i < static_cast<std::size_t>(part.columns); ++i) {
            if (mask_buffer_[at++] == 0) {
                window.Flag(start + i, kMasked);
            }
        }
    }
    return true;
}

void RasterNodes::FlagUnreadable(const Area& part, Window& window, const GdalScope& scope) {
    for (std::int32_t row = part.row; row < part.row + part.rows; ++row) {
        const std::size_t start = cell_in(window.area, part.column, row);
        for (std::size_t i = 0; i < static_cast<std::size_t>(part.columns); ++i) {
            window.Flag(start + i, kUnreadable);
        }
    }
    // One line a grid: there may be as many failures as blocks.
    if (!failure_reported_) {
        failure_reported_ = true;
        report(reported_as_, "the nodes at columns " + std::to_string(part.column) + " to " +
                                 std::to_string(part.column + (part.columns - 1)) + ", rows " +
                                 std::to_string(part.row) + " to " +
                                 std::to_string(part.row + (part.rows - 1)) +
                                 " of the file, and maybe more, can't be read: " +
                                 scope.Error("GDAL does not say why"));
    }
}

void RasterNodes::DropFromCache() {
    bytes_since_drop_ = 0;
    GDALFlushCache(file_->Dataset());
    if (mask_ != nullptr) {
        GDALFlushRasterCache(mask_);
    }
}

}  // namespace zol::engine::grid
