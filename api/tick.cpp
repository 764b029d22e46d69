#include "api/tick.h"

#include <chrono>

namespace zol::api {

std::uint32_t tick_milliseconds() {
    using std::chrono::duration_cast;
    using std::chrono::milliseconds;
    const auto since_start = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(duration_cast<milliseconds>(since_start).count());
}

}  // namespace zol::api
