// The text of an attribute, as callers of this family get it.
#pragma once

#include <string>

#include "platform/zolTriangulationExport.h"

namespace zol::tri {

inline std::string text_of(const ubx::object::Property& property) {
    constexpr int kDecimals = 6;
    std::string text;
    property.AsString(text, kDecimals);
    return text;
}

}  // namespace zol::tri
