// Brings what was found triangle by triangle into the order of the columns it belongs to.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace zol::engine::geometry {

/// Sorts in place and leaves equals in their order: fast for the few of one column.
template <class Item, class Less>
void sort_few(std::span<Item> items, Less less) {
    constexpr std::size_t kFew = 32;
    if (items.size() > kFew) {
        std::stable_sort(items.begin(), items.end(), less);
        return;
    }
    for (std::size_t i = 1; i < items.size(); ++i) {
        const Item moved = items[i];
        std::size_t place = i;
        for (; place > 0 && less(moved, items[place - 1]); --place) items[place] = items[place - 1];
        items[place] = moved;
    }
}

/// Items with a member `column`, column by column, and within one in the order in which
/// they were found.
template <class Item>
class ColumnLists {
public:
    /// Every column is below `columns`. A counting sort: O(items + columns).
    ColumnLists(std::vector<Item> items, std::size_t columns) : starts_(columns + 1, 0) {
        for (const Item& item : items) ++starts_[item.column + 1];
        for (std::size_t i = 0; i < columns; ++i) starts_[i + 1] += starts_[i];
        items_.resize(items.size());
        // Each start walks to the next one while its column fills.
        for (const Item& item : items) items_[starts_[item.column]++] = item;
    }

    std::span<Item> Of(std::size_t column) {
        const std::size_t start = column == 0 ? 0 : starts_[column - 1];
        return std::span(items_).subspan(start, starts_[column] - start);
    }

private:
    std::vector<std::uint32_t> starts_;
    std::vector<Item> items_;
};

}  // namespace zol::engine::geometry
