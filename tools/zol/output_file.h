// A file that a command writes. It takes the place of an older one only when all of it is
// there, so that a failure on the way loses nothing.
#pragma once

#include <optional>
#include <string>

#include "tools/zol/output.h"

namespace zol::tool {

class OutputFile {
public:
    /// Throws WriteFailure when the file can't be made, and UsageError when it is the
    /// file `source` that the command reads.
    OutputFile(const std::string& file, const std::string& source);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Without Finish before it, leaves all as it was.
    ~OutputFile();

    Output& Rows() { return *output_; }
    void Finish();

private:
    std::string name_;
    /// Where the bytes go first; empty for what is no plain file, as a device or a pipe.
    std::string unfinished_;
    /// What Finish replaces.
    std::string target_;
    int descriptor_ = -1;
    std::optional<Output> output_;
};

}  // namespace zol::tool
