#include "api/call_log.h"

#include <array>
#include <fstream>
#include <locale>

#include "api/state.h"
#include "api/tick.h"

namespace zol::api {
namespace {

/// Both fields wrap silently.
struct Usage {
    std::uint32_t milliseconds = 0;
    std::uint64_t calls = 0;
};

std::array<Usage, kCountedFunctions.size()> usage;
std::ofstream log_stream;

}  // namespace

void start_log(const char* file_name) {
    if (state.logging != 0) {
        return;
    }
    // A locale that the process made its own would group the digits of the summary.
    log_stream.imbue(std::locale::classic());
    // This open also settles the stream's error state: cleared on success, so that a
    // failure of an earlier run is forgotten, and failed otherwise.
    log_stream.open(file_name, std::ios::out | std::ios::trunc);
    usage.fill(Usage{});
    state.logging = 1;
}

void finish_log() {
    if (state.logging == 0) {
        return;
    }
    log_stream << "\n\n" << std::endl;
    for (std::size_t row = 0; row < usage.size(); ++row) {
        const std::string_view name = kCountedFunctions[row];
        log_stream << name << "_time: " << usage[row].milliseconds << '\n';
        log_stream << name << "_calls: " << usage[row].calls << '\n';
    }
    log_stream.close();
    state.logging = 0;
}

void log_call(FunctionId function, std::uint32_t start_tick) {
    // The tick of the end comes first: the time of logging stays out of the sums.
    const std::uint32_t end_tick = tick_milliseconds();
    Usage& entry = usage[function.row];
    ++entry.calls;
    entry.milliseconds += end_tick - start_tick;
    // Flushed line by line, so that the log survives the death of the process.
    log_stream << function.Name() << std::endl;
}

}  // namespace zol::api
