// Between which values the colours run.
#pragma once

#include "tools/zol/relief/thumbnail.h"

namespace zol::tool {

struct ColourLimits {
    double low = 0;
    double high = 0;
    /// Whether values lie beyond, which share the colours of the ends.
    bool leaves_out = false;

    /// From 0 at the lower end to 1 at the upper; in the middle when they are the same.
    double PlaceOf(double value) const;
};

/// The least and the greatest value, unless that leaves nearly all cells in a few colours:
/// where less than 1 % at either end takes up four fifths of the range or more, those are
/// left out. `surface` has a value somewhere.
ColourLimits colour_limits(const Thumbnail& surface);

}  // namespace zol::tool
