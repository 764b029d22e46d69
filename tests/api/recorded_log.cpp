#include "tests/api/recorded_log.h"

#include <cstdio>
#include <sstream>

#include "api/zolExportedApi_ReadOnly.h"
#include "tests/api/files.h"

namespace zol::testing {

RecordedLog::RecordedLog() : file_name_(fresh_file_name("recorded.log")) {
    ZOL_API_StartLogging(file_name_.c_str());
}

RecordedLog::~RecordedLog() {
    ZOL_API_FinishLogging();
    std::remove(file_name_.c_str());
}

std::vector<std::string> RecordedLog::Finish() {
    ZOL_API_FinishLogging();
    text_ = text_of_file(file_name_);
    std::vector<std::string> lines;
    std::istringstream text(text_);
    for (std::string line; std::getline(text, line) && !line.empty();) {
        lines.push_back(line);
    }
    return lines;
}

std::string RecordedLog::Row(const std::string& label) const {
    const std::string head = "\n" + label + ": ";
    const std::size_t at = text_.find(head);
    if (at == std::string::npos) {
        return "no row " + label;
    }
    const std::size_t value = at + head.size();
    return text_.substr(value, text_.find('\n', value) - value);
}

}  // namespace zol::testing
