// Values as the plain records in which preferences are handed out.
#pragma once

#include "support/c_variant.h"
#include "support/variant.h"

namespace zol::engine {

/// A record of the value with texts and containers of its own; a text is cut at its first
/// null byte. Owned by the caller; end with clear_record. Throws std::bad_alloc.
CVariant record_of(const MVariant& value);

/// Releases what the record holds and leaves it empty.
void clear_record(CVariant& record);

}  // namespace zol::engine
