#include "support/variant_traversal.h"

#include <algorithm>
#include <span>

#include "support/ascii.h"

namespace zol::support {

namespace {

bool before(const VariantEntry& left, const VariantEntry& right) {
    return left.key < right.key;
}

// Keys that differ in case alone stand by their bytes, so that equal maps have one order.
bool before_ignoring_case(const VariantEntry& left, const VariantEntry& right) {
    const int order = compare_ignoring_case(left.key, right.key);
    return order != 0 ? order < 0 : before(left, right);
}

// Told the function itself, the sort has no pointer to call through.
template <bool (*is_before)(const VariantEntry&, const VariantEntry&)>
void sort(std::span<VariantEntry> entries) {
    std::sort(entries.begin(), entries.end(),
              [](const auto& left, const auto& right) { return is_before(left, right); });
}

}  // namespace

void append_entries(const VStringMap<MVariant>& map, KeyOrder order,
                    std::vector<VariantEntry>& entries) {
    const std::size_t first = entries.size();
    map.ForEach([&](const char* key, const MVariant& value) { entries.push_back({key, &value}); });
    const std::span<VariantEntry> added = std::span(entries).subspan(first);
    if (order == KeyOrder::kSorted) {
        sort<before>(added);
    } else if (order == KeyOrder::kSortedIgnoringCase) {
        sort<before_ignoring_case>(added);
    }
}

}  // namespace zol::support
