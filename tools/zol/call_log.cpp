#include "tools/zol/call_log.h"

#include <fstream>

#include "api/zolExportedApi_ReadOnly.h"
#include "tools/zol/exit_codes.h"

namespace zol::tool {

CallLog::CallLog(const std::string& file) {
    if (file.empty()) return;
    if (!std::ofstream(file)) throw WriteFailure("can't write the log '" + file + "'.", false);
    ZOL_API_StartLogging(file.c_str());
}

// Does nothing when no log was started.
CallLog::~CallLog() {
    ZOL_API_FinishLogging();
}

}  // namespace zol::tool
