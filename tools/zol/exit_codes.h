// How `zol` ends, and the errors that end it.
#pragma once

#include <stdexcept>
#include <string>

namespace zol::tool {

enum ExitCode : int {
    kGood = 0,
    kNotFound = 1,
    kFaultsFound = 1,
    kWrongUse = 2,
    kUnreadable = 3,
    kUnwritable = 4,
};

inline constexpr const char* kExitCodesHelp =
    "Exit codes: 0 good, 1 nothing found, or faults by a check, 2 wrong use,\n"
    "3 the file can't be read, 4 the output can't be written.";

/// What the caller asked for makes no sense for this file: exit code 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The file can't be read: exit code 3.
class ReadFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The output can't be written: exit code 4. Quiet where whoever read the output
/// went away, as `head` does.
class WriteFailure : public std::runtime_error {
public:
    WriteFailure(const std::string& reason, bool quiet)
        : std::runtime_error(reason), quiet_(quiet) {}

    bool IsQuiet() const { return quiet_; }

private:
    bool quiet_;
};

}  // namespace zol::tool
