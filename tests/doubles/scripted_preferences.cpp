#include "tests/doubles/scripted_preferences.h"

#include "platform/ZelmarDevAExport.h"

namespace zol::doubles {

CVariant* preferences = nullptr;
int preference_readings = 0;

}  // namespace zol::doubles

CVariant* pref_CGetPreferences() {
    ++zol::doubles::preference_readings;
    return zol::doubles::preferences;
}
