// A look at the header of a classic netCDF file before a library reads it.
#pragma once

#include "engine/formats/file.h"

namespace zol::engine::grid {

/// Throws ReadError when a list in the header claims more than the file holds: the reading
/// library takes memory for what is claimed, gigabytes for a changed byte. Files of the
/// classic form begin with "CDF" and 1, 2 or 5; others are not looked at.
void check_netcdf_header(const File& file);

}  // namespace zol::engine::grid
