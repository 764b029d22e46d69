// Opens any bytes as a grid and asks it everything.
//
// With a fuzzing engine it is built as a target of its own; in the ordinary test run
// standalone.cpp replays the samples and changed copies of them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/zolGridExport.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::model::grid::Grid;

constexpr int kMostAnAxis = 40;

// Results are summed up only so that no call can be left out.
double ask_everything(const Grid& grid) {
    zol::geometry::Point2D lower;
    zol::geometry::Point2D upper;
    double along_x = 0.0;
    double along_y = 0.0;
    grid.GetExtent(lower, upper);
    grid.GetSpacing(along_x, along_y);
    double sum = lower.x + upper.y + along_x + along_y;
    const std::int32_t columns = grid.GetWidthNodeCount();
    const std::int32_t rows = grid.GetHeightNodeCount();
    const auto ask = [&](std::int32_t column, std::int32_t row) {
        double value = 0.0;
        bool masked = false;
        if (grid.GetNodeValue(column, row, value, masked)) {
            sum += masked ? 0.0 : value;
        }
    };
    for (std::int32_t row = -1; row < std::min(rows, kMostAnAxis); ++row) {
        for (std::int32_t column = -1; column < std::min(columns, kMostAnAxis); ++column) {
            ask(column, row);
            ask(columns - column, rows - row);
        }
    }
    return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const zol::testing_support::TemporaryFile file(
        std::string_view(reinterpret_cast<const char*>(data), size));
    const Grid grid(file.Path());
    const volatile double answers = grid.IsValid() ? ask_everything(grid) : 0.0;
    static_cast<void>(answers);
    return 0;
}
