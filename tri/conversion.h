// The value of an attribute in the type that a caller asks for, whatever type it has.
//
// A text is first held against a pattern of regex_Match, letter case not counting, and
// then converted as far as it goes. An oddity of these patterns is said at the pattern.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/zolTriangulationExport.h"

namespace zol::tri {

/// Nothing where the attribute is no number: of a type that has none, or a text that
/// does not look like one. Reals are cut towards zero; one outside the range of the
/// result, or NaN, gives the least number of the range.
std::optional<std::int32_t> as_int32(const ubx::object::Property& property);
/// A text reaches no further than 32 bits here too.
std::optional<std::int64_t> as_int64(const ubx::object::Property& property);
std::optional<double> as_double(const ubx::object::Property& property);

/// Nothing where the attribute is no truth value; 0 is false and all else true, NaN too.
std::optional<bool> as_boolean(const ubx::object::Property& property);

/// Stores a date's fields, and tells whether there was one: a text, by type name of one
/// of the three orders of fields, that looks like that order. The fields are read from the start of
/// the text; where it does not begin with them, they stay as they were.
bool store_date(const ubx::object::Property& property, int* year, int* month, int* day);

}  // namespace zol::tri
