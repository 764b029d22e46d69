#include "engine/preferences/file.h"
#include "engine/preferences/record.h"
#include "platform/ZelmarDevAExport.h"

CVariant* pref_CGetPreferences() {
    // Never destroyed: callers keep the pointer as long as they run.
    static auto* const preferences =
        new CVariant(zol::engine::record_of(zol::engine::read_preferences()));
    return preferences;
}
