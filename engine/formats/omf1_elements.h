// What every reader of OMF 1 files asks of its elements: which one is meant, and the
// vectors and cell widths of its geometry.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/formats/json.h"
#include "engine/formats/omf1_file.h"

namespace zol::engine {

/// The first element that `is_wanted`, of that name unless `name` is empty. Throws ReadError,
/// which calls what is wanted `kind` and lists what there is.
const Omf1Element& choose_element(const std::vector<Omf1Element>& elements, const std::string& name,
                                  const std::string& kind,
                                  const std::function<bool(const Omf1Element&)>& is_wanted);

/// Three finite numbers, or `otherwise` where the object has no such key. Throws ReadError.
std::array<double, 3> read_vector(const JsonValue& object, std::string_view key,
                                  const std::array<double, 3>& otherwise);

/// The widths of cells along an axis: one at least and `most` at most, each above 0 and
/// finite. Throws ReadError.
std::vector<double> read_widths(const JsonValue& list, std::size_t most);

}  // namespace zol::engine
