// Spreads work over the processor's cores for the length of one call.
#pragma once

#include <functional>

namespace zol::engine {

/// How many workers a large reading job is given on this machine: at least 1.
unsigned worker_count();

/// Runs `work(0)` to `work(workers - 1)` at the same time, one of them on the calling
/// thread, and returns when all have ended. Where the system gives fewer threads
/// fewer workers run, so work is shared out by taking turns, never by worker number.
/// An exception of a worker is thrown again, that of the lowest worker first.
void run_workers(unsigned workers, const std::function<void(unsigned)>& work);

}  // namespace zol::engine
