// What libZelmarDevAExport.so gives: the preferences of the user.
//
// The record and the containers in it are those of the support library.
#pragma once

#include "platform/visibility.h"

struct CVariant;

/// The preferences: a map from names to values, among them "language". Never null. Owned
/// by the library, which reads them once and keeps them to the end of the process; not to
/// be written.
ZOL_PLATFORM CVariant* pref_CGetPreferences();
