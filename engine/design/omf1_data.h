// The data of a line set or a point set of an OMF 1 file: a value for each vertex or
// segment, as text.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/formats/file.h"
#include "engine/formats/json.h"
#include "engine/formats/omf1_file.h"
#include "engine/formats/omf1_values.h"

namespace zol::engine::design {

/// What data belong to.
enum class DataPlace { Vertices, Segments };

/// Values in their order.
template <class T>
using ValueAt = std::function<T(std::size_t row)>;

struct Omf1Data {
    std::string name;
    DataPlace place = DataPlace::Vertices;
    /// Empty for a value that is missing.
    ValueAt<std::string> text;
};

struct Omf1Colours {
    DataPlace place = DataPlace::Vertices;
    /// Nothing for one that is missing.
    ValueAt<std::optional<Omf1Colour>> colour;
};

struct Omf1DataSet {
    std::vector<Omf1Data> data;
    /// The first data of colours; the others are among the data.
    std::optional<Omf1Colours> colours;
};

struct DataCounts {
    std::size_t vertices = 0;
    /// Nothing where there are none that data could belong to.
    std::optional<std::size_t> segments;
};

/// All data of an element, read. Components of a vector are data of their own, "name.x" and so
/// on. Throws ReadError, also for data that are not as many as what they belong to.
Omf1DataSet read_omf1_data(const File& file, const Omf1Document& document, const JsonValue& element,
                           const DataCounts& counts);

/// Calls `take` with every colour of the first data of colours of an element, of which nothing
/// else is read. Throws ReadError.
void for_each_colour(const File& file, const Omf1Document& document, const JsonValue& element,
                     const std::function<void(const Omf1Colour&)>& take);

}  // namespace zol::engine::design
