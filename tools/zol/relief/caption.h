// Texts of a page: what its caption says, and how it is broken into lines.
#pragma once

#include <string>
#include <vector>

#include "tools/zol/relief/canvas.h"
#include "tools/zol/relief/colour_limits.h"
#include "tools/zol/relief/picture.h"

namespace zol::tool {

/// An exaggeration of 0 says that the surface is not shaded.
std::vector<std::string> caption_of(const Thumbnail& surface, const MapScale& scale,
                                    const PictureFacts& facts, double exaggeration,
                                    const ColourLimits& limits);

/// Lines of at most `width` pixels, broken at blanks.
std::vector<std::string> wrapped(const std::vector<std::string>& lines, double width,
                                 const TextStyle& style, Canvas& canvas);

/// A file's name for a page: in UTF-8, on one line, and no wider than `width` pixels.
std::string title_of(const std::string& name, double width, const TextStyle& style, Canvas& canvas);

}  // namespace zol::tool
