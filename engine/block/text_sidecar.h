// The JSON file beside a table that says what the table does not.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/block/cell_order.h"
#include "engine/block/header_roles.h"
#include "engine/block/placement.h"
#include "engine/block/sidecar_values.h"
#include "engine/block/source.h"
#include "engine/block/variable.h"
#include "engine/formats/cell_reader.h"
#include "engine/formats/text_head.h"

namespace zol::engine::block {

/// What a sidecar says of one column. What it leaves open is empty.
struct FieldSpec {
    std::string name;
    /// The column's header where it differs from the name.
    std::string header;
    std::string description;
    CellFormat::Kind kind = CellFormat::Kind::Guess;
    std::optional<Storage> storage;
    std::optional<char> decimal_point;
    char group_mark = 0;
    bool bare_number = true;
    std::optional<std::vector<std::string>> missing;
    /// Stated: the column is geometry, or explicitly has no role.
    std::optional<ColumnRole> role;
    std::vector<Translation> translations;
    double default_number = kMissing;
    std::string default_text;
};

/// What a sidecar says of the model's geometry.
struct ModelSpec {
    std::optional<geometry::Coord3D> origin;
    std::optional<Rotation> rotation;
    std::optional<geometry::Coord3D> angles;
    /// Coordinates of the table are model coordinates, not world coordinates.
    bool local = false;
    std::optional<Triple> parent_size;
    std::optional<Triple> minimum_size;
    std::optional<Counts> count;
    std::optional<std::array<double, 6>> extent;
    CellOrder order;
    std::int64_t index_base = 0;
    bool layered = false;
    std::vector<SchemaFacts> schemas;

    bool IsRotated() const { return rotation || angles; }
};

struct TextSidecar {
    /// The sidecar's own file name; empty when there is none.
    std::string path;
    std::string name;
    std::string encoding;
    TextHints dialect;
    std::optional<std::vector<std::string>> missing;
    std::vector<FieldSpec> fields;
    ModelSpec model;
};

/// The sidecar of a table: `table.csv.json`, else `table.json`, else the resource of
/// that path in `datapackage.json` of the folder; an empty one when there is none.
/// Throws ReadError that names the sidecar and the JSON path of what is wrong.
TextSidecar find_sidecar(const std::string& table);

/// Reads the text of a sidecar.
TextSidecar parse_sidecar(const JsonValue& root);

}  // namespace zol::engine::block
