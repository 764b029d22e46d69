// Values of a sidecar in the shapes that a block model needs. Each of these throws
// ReadError with the JSON path of what is wrong.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/block/variable.h"
#include "engine/formats/json.h"
#include "platform/zolGeometryExport.h"

namespace zol::engine::block {

using Triple = std::array<double, 3>;
using Counts = std::array<std::int64_t, 3>;

/// A text of one character; NUL for an empty one.
char read_character(const JsonValue& value);
std::vector<std::string> read_texts(const JsonValue& list);
/// Three finite numbers.
Triple read_triple(const JsonValue& value);
geometry::Coord3D read_coordinates(const JsonValue& value);
/// Three finite numbers above 0.
Triple read_sizes(const JsonValue& value);
/// Three whole numbers from 1 to what fits 31 bits.
Counts read_counts(const JsonValue& value);
/// A lower corner and an upper corner above it.
std::array<double, 6> read_extent(const JsonValue& value);
/// Codes with their names, in code order: of a list, counted from 0; of an object, its keys.
std::vector<Translation> read_translations(const JsonValue& value);

}  // namespace zol::engine::block
