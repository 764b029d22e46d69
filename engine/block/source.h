// What every block model reader produces, and what the model answers from.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/block/geometry.h"
#include "engine/block/placement.h"
#include "engine/block/variable.h"
#include "platform/zolGeometryExport.h"

namespace zol::engine::block {

/// One way in which blocks are laid out, in model coordinates.
struct SchemaFacts {
    bool original = true;
    zol::geometry::Extent extent{0, 0, 0, 0, 0, 0};
    zol::geometry::Point3I dimensions;
    zol::geometry::Coord3D minimum_size;
    zol::geometry::Coord3D maximum_size;
};

/// An opened block model: its catalogue is read, its columns are not. Columns and
/// geometry keep the file they decode from alive.
struct Source {
    std::string name;
    Placement placement;
    std::unique_ptr<Geometry> geometry;
    zol::geometry::Extent extent{0, 0, 0, 0, 0, 0};
    bool stratigraphic = false;
    /// The parent lattice first.
    std::vector<SchemaFacts> schemas;
    /// In file order; names are unique and not empty.
    std::vector<Variable> variables;
};

/// Opens a block model file: recognises it by content, then by ending, and picks
/// the element that the name carries after its last '#'. Throws ReadError with
/// the reason when the file can't be read as a whole, and nothing else but
/// std::bad_alloc.
Source open_source(const std::string& file);

}  // namespace zol::engine::block
