// Extended data of an entity as named fields.
#pragma once

#include <span>
#include <vector>

#include "engine/formats/dxf/drawing.h"
#include "engine/formats/dxf/entity.h"
#include "engine/formats/dxf/text_decoder.h"

namespace zol::engine {

/// A text "key=value" is the field "APP.key", any other value of an application "APP.n", its
/// place among the values from 1; a point is one value, braces are none. Texts whose keys are
/// those of an object's own traits, whatever their letters' case and their application, are
/// fields called NAME, GROUP, FEATURE, DESC and VALUE; a second of one is like any other.
std::vector<DrawingField> fields_of_extended(std::span<const ExtendedTag> tags,
                                             TextDecoder& decoder);

}  // namespace zol::engine
