// The colour that the libraries underneath speak in.
#pragma once

#include <cstdint>

namespace zol::graphics {

/// Red in the lowest byte, then green, then blue; the top byte means nothing.
struct RGB {
    std::uint32_t value = 0;
};

}  // namespace zol::graphics
