// A line set or a point set of an OMF 1 file as a layer.
#pragma once

#include <memory>

#include "engine/design/colour_list.h"
#include "engine/design/source.h"
#include "engine/formats/file.h"
#include "engine/formats/omf1_file.h"

namespace zol::engine::design {

/// The colour of what is given none.
inline constexpr ColourList::Colour kPlainColour = {128, 128, 128};

bool is_omf1_layer(const Omf1Element& element);

/// Reads all of the element. `colours` has all of its colours. Throws ReadError.
std::unique_ptr<LayerSource> open_omf1_layer(const File& file, const Omf1Document& document,
                                             const Omf1Element& element,
                                             std::shared_ptr<const ColourList> colours);

}  // namespace zol::engine::design
