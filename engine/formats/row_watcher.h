// Who wants to see numbers of a table while it is surveyed.
#pragma once

#include <cstddef>
#include <vector>

namespace zol::engine {

/// Takes the numbers of chosen columns, some rows at a time in the order of one block.
/// Each worker has its own.
class RowWatcher {
public:
    RowWatcher() = default;
    RowWatcher(const RowWatcher&) = delete;
    RowWatcher& operator=(const RowWatcher&) = delete;
    virtual ~RowWatcher() = default;

    /// The first number that is wrong.
    struct Fault {
        /// The count of rows when nothing is wrong.
        std::size_t row = 0;
        /// Which of the watched columns.
        std::size_t column = 0;
        /// What is wrong with it; null when nothing is.
        const char* reason = nullptr;
    };

    /// The first `count` numbers of each watched column, NaN for missing ones.
    virtual Fault Rows(const std::vector<std::vector<double>>& columns, std::size_t count) = 0;
};

}  // namespace zol::engine
