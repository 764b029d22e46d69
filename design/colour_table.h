// The colours that colour indices of objects stand for: one table for the whole process, that
// of the database opened last, whichever database an object is from. Callers know it so.
#pragma once

#include "platform/zolDesignExport.h"

namespace zol::design::flat {

/// Puts the colours of the database, which may be none, in the place of those before.
void take_colours(const Database& database);

/// Empties the table: the default palette holds until the next database is opened.
void forget_colours();

/// The colour at a position in the table, or in the default palette while that is empty.
/// Black where there is no such position.
graphics::RGB colour_at(int index);

}  // namespace zol::design::flat
