// The diagnostics channel: where a person learns why a file did not open.
//
// Off by default. The environment variable ZOL_DIAGNOSTICS turns it on: "stderr"
// writes to standard error, any other text names a file that is appended to. The
// variable is read at each report, so that a program may set it at any time.
#pragma once

#include <string>
#include <string_view>

namespace zol::engine {

/// Writes one line "zol: <file>: <text>"; line ends and other control bytes in
/// either are shown as '?'. Never throws and never reports a failure of its own.
void report(std::string_view file, std::string_view text) noexcept;

}  // namespace zol::engine
