// Colours for values: even steps of value are even steps to the eye, and lightness alone
// tells high from low, so that the picture also works for colour-blind readers and in grey.
#pragma once

namespace zol::tool {

/// Red, green and blue from 0 to 1, as sRGB.
struct Rgb {
    double red = 0;
    double green = 0;
    double blue = 0;
};

/// `place` runs from 0, low, to 1, high.
Rgb colour_at(double place);

/// The colour under light: as it is where `light` is 1, darker below, lighter above.
Rgb lit(const Rgb& colour, double light);

}  // namespace zol::tool
