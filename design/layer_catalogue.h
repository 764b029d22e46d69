// The catalogue of layers: the list of a database less the layers that are kept from
// callers. It is made afresh for each question.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zol::design::flat {

/// The number of layers in the catalogue.
int count_listed(const std::vector<std::string>& names);

/// The position in `names` of the layer at a catalogue index; nothing where there is none.
std::optional<int> position_of(const std::vector<std::string>& names, int catalogue_index);

}  // namespace zol::design::flat
