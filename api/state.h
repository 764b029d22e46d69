// What the library remembers between calls, apart from the call log's counters.
//
// Plain static storage, shared by all threads and locked by none. Static initialisation
// sets the flags and the slot; it opens no file and calls no library underneath.
#pragma once

#include <cstdint>
#include <string>

namespace zol::api {

struct State {
    /// 1 from the first initialisation on; nothing clears it.
    std::int32_t initialised = 0;
    /// 1 while a call log is asked for, also when its file could not be opened.
    std::uint8_t logging = 0;
    /// The last-error slot. An error is pending exactly while it is not empty.
    std::string last_error;
};

extern State state;

}  // namespace zol::api
