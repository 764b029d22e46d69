#include "tests/doubles/scripted_tick.h"

#include "api/tick.h"

namespace zol::doubles {

std::deque<std::uint32_t> ticks;
int tick_readings = 0;

}  // namespace zol::doubles

std::uint32_t zol::api::tick_milliseconds() {
    ++doubles::tick_readings;
    if (doubles::ticks.empty()) {
        return 0;
    }
    const std::uint32_t tick = doubles::ticks.front();
    doubles::ticks.pop_front();
    return tick;
}
