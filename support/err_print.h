// The one way in which this library speaks of misuse: a line on the standard error
// stream. Nothing else is recorded.
#pragma once

/// Writes the text that `printf` would make of the arguments, then one newline. May be
/// called from several threads: the lines don't mix.
[[gnu::format(printf, 1, 2)]] void err_Print(const char* format, ...);
