// A file that a command writes. It takes the place of an older one only when all of it is
// there, so that a failure on the way loses nothing.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/zol/output.h"
#include "tools/zol/progress_bar.h"

namespace zol::tool {

class OutputFile {
public:
    /// Throws WriteFailure when the file can't be made, and UsageError when it is one
    /// of the files `sources` that the command reads.
    OutputFile(const std::string& file, const std::vector<std::string>& sources);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Without Finish before it, leaves all as it was.
    ~OutputFile();

    Output& Stream() { return *output_; }
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

/// Hands `write` the file `to`, made as an OutputFile, or `output` where no file is asked for.
void write_to(const std::optional<std::string>& to, const std::vector<std::string>& sources,
              Output& output, const std::function<void(Output&)>& write);

/// What comes on standard output while a command writes to `to`.
ProgressBar::Meanwhile meanwhile_of(const std::optional<std::string>& to);

}  // namespace zol::tool
