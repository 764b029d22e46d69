// A call log in a file of its own, read back as text.
#pragma once

#include <string>
#include <vector>

namespace zol::testing {

/// Logs from its making to Finish, or to its end.
class RecordedLog {
public:
    RecordedLog();
    RecordedLog(const RecordedLog&) = delete;
    RecordedLog& operator=(const RecordedLog&) = delete;
    ~RecordedLog();

    /// Ends the log; gives the names of the logged calls, and with them any other
    /// line that stands ahead of the summary's three empty ones.
    std::vector<std::string> Finish();

    /// Number in the summary behind the label, such as "ZOL_BlockModel_Open_calls".
    /// Only after Finish.
    std::string Row(const std::string& label) const;

private:
    std::string file_name_;
    std::string text_;
};

}  // namespace zol::testing
