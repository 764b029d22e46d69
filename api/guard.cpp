#include "api/guard.h"

namespace zol::api {

void report_failure(std::string_view speaker, std::string_view tail) {
    // All the memory first: if there is none, the slot keeps the text that it has.
    state.last_error.reserve(speaker.size() + 1 + tail.size());
    state.last_error.assign(speaker).append(1, ' ').append(tail);
}

void report_not_initialised() {
    state.last_error = "ZOL_API not initialised.";
}

}  // namespace zol::api
