// What the library below says about the call that failed last.
#pragma once

namespace zol::tool {

/// Throws ReadFailure with the text of the interface's last error.
[[noreturn]] void fail_by_last_error();

}  // namespace zol::tool
