// Preferences that a test writes, in the place of those of the user.
#pragma once

struct CVariant;

namespace zol::doubles {

/// What the next calls give; null at first.
extern CVariant* preferences;
extern int preference_readings;

}  // namespace zol::doubles
