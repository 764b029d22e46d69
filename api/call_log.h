// The call log: a text file with one line per successful call and a summary of
// all counters at its end. docs/call_log.md describes the file.
#pragma once

#include <cstdint>

#include "api/counted_functions.h"

namespace zol::api {

/// Opens the log and zeroes the counters; does nothing while logging is on. A file
/// that can't be opened is not reported: logging is on, and nothing is written.
void start_log(const char* file_name);

/// Writes the summary and closes the log; does nothing while logging is off.
void finish_log();

/// Counts a successful call that began at `start_tick`, and logs its name. Only to
/// be called while logging is on.
void log_call(FunctionId function, std::uint32_t start_tick);

}  // namespace zol::api
