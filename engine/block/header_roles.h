// What a column of a table means for the geometry of a block model.
#pragma once

#include <string_view>

namespace zol::engine::block {

/// The role of a column and the axis (0 is x) that it is for.
enum class Role {
    None,
    Centroid,
    Size,
    Index,
    Lower,
    Upper,
    /// i, j and k in one number.
    CellNumber,
    /// The model's lower corner, the same in every row.
    Origin,
    /// Count of parents, the same in every row.
    Count
};

struct ColumnRole {
    Role role = Role::None;
    int axis = 0;

    bool operator==(const ColumnRole&) const = default;
};

/// The role that a header says, whatever its letter case, blanks, underscores, quotes
/// and a unit in brackets: "X [m]", "xc", "Easting", "centroid_x".
ColumnRole role_of_header(std::string_view header);

/// The role that a sidecar's "block:role" says: "x", "dx", "i", "ijk", "xmin", "zmax".
/// False for a word that is none; "volume" and "density" are words without a role.
bool role_of_word(std::string_view word, ColumnRole& role);

}  // namespace zol::engine::block
