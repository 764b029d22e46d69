#include "api/guard.h"

namespace zol::api {

std::nullopt_t Call::Fail(std::string_view tail) const {
    // All the memory first: if there is none, the slot keeps the text that it has.
    state.last_error.reserve(speaker_.size() + 1 + tail.size());
    state.last_error.assign(speaker_).append(1, ' ').append(tail);
    return std::nullopt;
}

void report_not_initialised() {
    state.last_error = "ZOL_API not initialised.";
}

}  // namespace zol::api
