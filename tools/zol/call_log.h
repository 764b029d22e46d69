// The library's own log of its calls, for as long as a command runs.
#pragma once

#include <string>

namespace zol::tool {

class CallLog {
public:
    /// Logs to `file` until the end of this object; an empty name logs nowhere.
    /// Throws WriteFailure when the file can't be written: the library itself
    /// would not tell.
    explicit CallLog(const std::string& file);
    CallLog(const CallLog&) = delete;
    CallLog& operator=(const CallLog&) = delete;
    ~CallLog();
};

}  // namespace zol::tool
