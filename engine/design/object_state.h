// How an object gets its state from what its reader hands over.
#pragma once

#include "engine/design/object_record.h"
#include "platform/zolDesignExport.h"

namespace zol::engine::design {

/// Makes `object` the one of the record.
void fill(zol::design::Object& object, ObjectRecord record);

}  // namespace zol::engine::design
