// How programs that measure tell time, memory, and that they can't.
#pragma once

#include <sys/resource.h>
#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace bench {

[[noreturn]] inline void fail(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(1);
}

/// Processor time, of all threads: a machine is rarely alone with one.
inline double seconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Seconds that the work takes.
template <class Work>
double timed(Work work) {
    const double start = seconds();
    work();
    return seconds() - start;
}

inline double peak_megabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

}  // namespace bench
