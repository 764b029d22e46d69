#include "engine/grid/netcdf_axes.h"

#include <cpl_string.h>
#include <gdal.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "engine/formats/number_text.h"
#include "engine/formats/read_error.h"

namespace zol::engine::grid {

namespace {

// Of a step: no program computes coordinates worse, and no lattice is bent by less.
constexpr double kMostUneven = 1e-3;

template <auto Release>
struct ReleasedBy {
    template <typename Handle>
    void operator()(Handle* handle) const {
        Release(handle);
    }
};

using Group = std::unique_ptr<std::remove_pointer_t<GDALGroupH>, ReleasedBy<GDALGroupRelease>>;
using Array = std::unique_ptr<std::remove_pointer_t<GDALMDArrayH>, ReleasedBy<GDALMDArrayRelease>>;
using DataType = std::unique_ptr<std::remove_pointer_t<GDALExtendedDataTypeH>,
                                 ReleasedBy<GDALExtendedDataTypeRelease>>;

/// The file seen as variables of any number of dimensions.
class Variables {
public:
    explicit Variables(const std::string& path) {
        constexpr std::array<const char*, 2> kDrivers = {"netCDF", nullptr};
        dataset_ = GDALOpenEx(path.c_str(), GDAL_OF_MULTIDIM_RASTER | GDAL_OF_READONLY,
                              kDrivers.data(), nullptr, nullptr);
        if (dataset_ != nullptr) {
            root_.reset(GDALDatasetGetRootGroup(dataset_));
        }
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;
    ~Variables() {
        root_.reset();
        if (dataset_ != nullptr) {
            GDALClose(dataset_);
        }
    }

    Array Open(const std::string& name) const {
        if (root_ == nullptr || name.empty()) {
            return nullptr;
        }
        const std::string full = name.starts_with('/') ? name : '/' + name;
        return Array(GDALGroupOpenMDArrayFromFullname(root_.get(), full.c_str(), nullptr));
    }

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        char** const list =
            root_ != nullptr ? GDALGroupGetMDArrayNames(root_.get(), nullptr) : nullptr;
        for (char* const* name = list; name != nullptr && *name != nullptr; ++name) {
            names.emplace_back(*name);
        }
        CSLDestroy(list);
        return names;
    }

private:
    GDALDatasetH dataset_ = nullptr;
    Group root_;
};

class Dimensions {
public:
    explicit Dimensions(GDALMDArrayH array) : all_(GDALMDArrayGetDimensions(array, &count_)) {}
    Dimensions(const Dimensions&) = delete;
    Dimensions& operator=(const Dimensions&) = delete;
    ~Dimensions() { GDALReleaseDimensions(all_, count_); }

    std::size_t Count() const { return all_ != nullptr ? count_ : 0; }
    GDALDimensionH At(std::size_t index) const { return all_[index]; }

private:
    std::size_t count_ = 0;
    GDALDimensionH* all_;
};

/// The numbers of a variable of one dimension.
class Coordinates {
public:
    Coordinates(GDALMDArrayH stored, GUInt64 count)
        : name_(GDALMDArrayGetName(stored)),
          unit_(GDALMDArrayGetUnit(stored)),
          count_(count),
          // Scaled, and NaN where one is missing.
          values_(GDALMDArrayGetUnscaled(stored)),
          type_(GDALExtendedDataTypeCreate(GDT_Float64)) {
        const DataType type(GDALMDArrayGetDataType(stored));
        is_float_ = GDALExtendedDataTypeGetNumericDataType(type.get()) == GDT_Float32;
    }

    const std::string& Unit() const { return unit_; }

    NodeSteps Steps() const {
        const double first = Read(0, 1).front();
        if (count_ == 1) {
            return {first, 0.0};
        }
        const double last = Read(count_ - 1, 1).front();
        const double step = (last - first) / static_cast<double>(count_ - 1);
        double slack = kMostUneven * std::fabs(step);
        if (is_float_) {
            slack +=
                std::numeric_limits<float>::epsilon() * std::max(std::fabs(first), std::fabs(last));
        }
        constexpr GUInt64 kPiece = 65536;
        for (GUInt64 start = 0; start < count_; start += kPiece) {
            const std::vector<double> piece = Read(start, std::min(kPiece, count_ - start));
            for (std::size_t i = 0; i < piece.size(); ++i) {
                const double expected = first + static_cast<double>(start + i) * step;
                // Written so that NaN fails too.
                if (!(std::fabs(piece[i] - expected) <= slack)) {
                    Refuse(start + i, piece[i], expected);
                }
            }
        }
        return {first, step};
    }

private:
    std::vector<double> Read(GUInt64 start, GUInt64 count) const {
        std::vector<double> values(count);
        const std::size_t size = values.size();
        if (values_ == nullptr ||
            GDALMDArrayRead(values_.get(), &start, &size, nullptr, nullptr, type_.get(),
                            values.data(), nullptr, 0) == FALSE) {
            throw ReadError("the coordinates \"" + name_ + "\" can't be read");
        }
        return values;
    }

    [[noreturn]] void Refuse(GUInt64 index, double found, double expected) const {
        throw ReadError("the coordinates \"" + name_ + "\" are not evenly apart: number " +
                        std::to_string(index + 1) + " of " + std::to_string(count_) + " is " +
                        number_text(found) + ", not " + number_text(expected));
    }

    std::string name_;
    std::string unit_;
    GUInt64 count_;
    Array values_;
    DataType type_;
    bool is_float_ = false;
};

std::optional<Coordinates> coordinates_of(GDALDimensionH dimension) {
    const Array stored(GDALDimensionGetIndexingVariable(dimension));
    const GUInt64 count = GDALDimensionGetSize(dimension);
    if (stored == nullptr || count == 0 || GDALMDArrayGetDimensionCount(stored.get()) != 1 ||
        GDALMDArrayGetTotalElementsCount(stored.get()) != count) {
        return std::nullopt;
    }
    const DataType type(GDALMDArrayGetDataType(stored.get()));
    if (GDALExtendedDataTypeGetClass(type.get()) != GEDTC_NUMERIC) {
        return std::nullopt;
    }
    return Coordinates(stored.get(), count);
}

}  // namespace

std::optional<NetcdfAxes> netcdf_axes(const RasterFile& file, int band) {
    // What GDAL says of other variables is no news of this one.
    const GdalScope scope(file.Network());
    const Variables variables(file.Path());
    const Array values = variables.Open(file.NetcdfVariable(band));
    if (values == nullptr) {
        return std::nullopt;
    }
    const Dimensions dimensions(values.get());
    const std::size_t count = dimensions.Count();
    if (count < 2) {
        return std::nullopt;
    }
    const std::optional<Coordinates> x = coordinates_of(dimensions.At(count - 1));
    const std::optional<Coordinates> y = coordinates_of(dimensions.At(count - 2));
    if (!x || !y) {
        return std::nullopt;
    }
    if (x->Unit().starts_with("degree") && x->Unit().ends_with("north")) {
        throw ReadError("its rows run north and its columns east");
    }
    return NetcdfAxes{x->Steps(), y->Steps()};
}

void refuse_netcdf_without_records(const std::string& path, GdalScope::Network network) {
    const GdalScope scope(network);
    const Variables variables(path);
    for (const std::string& name : variables.Names()) {
        const Array array = variables.Open(name);
        if (array == nullptr || GDALMDArrayGetDimensionCount(array.get()) < 2) {
            continue;
        }
        const Dimensions dimensions(array.get());
        for (std::size_t i = 0; i < dimensions.Count(); ++i) {
            if (GDALDimensionGetSize(dimensions.At(i)) == 0) {
                throw ReadError("its variable \"" + name + "\" has no records yet: \"" +
                                GDALDimensionGetName(dimensions.At(i)) + "\" is of length 0");
            }
        }
    }
}

}  // namespace zol::engine::grid
