// A value and all that is in it, in order and without recursion: one walk for whatever
// only reads values (texts, records, sizes).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "support/string_map.h"
#include "support/value_vector.h"
#include "support/variant.h"

namespace zol::support {

enum class KeyOrder { kTable, kSorted, kSortedIgnoringCase };

/// An entry of a map, for as long as the map stays as it is.
struct VariantEntry {
    std::string_view key;  // null-terminated
    const MVariant* value;
};

/// Puts the entries of a map behind those that are in `entries`.
void append_entries(const VStringMap<MVariant>& map, KeyOrder order,
                    std::vector<VariantEntry>& entries);

/// Where in the walk a value stands.
struct VariantPlace {
    const char* key;         // in its map; null in a vector and for the root
    const MVariant* parent;  // null for the root
    std::int32_t index;      // among its siblings, from 0
    std::int32_t siblings;   // itself included
    std::size_t depth;       // 0 for the root
    bool IsLast() const { return index + 1 == siblings; }
};

/// Calls `visitor.Begin(value, place)` for every value, a container before what is in it,
/// and `visitor.End(value, place)` for every container, behind what is in it.
template <typename Visitor>
class VariantTraversal {
public:
    VariantTraversal(KeyOrder order, Visitor& visitor) : order_(order), visitor_(visitor) {}

    void Run(const MVariant& root) {
        Visit(root, {nullptr, nullptr, 0, 1, 0});
        while (!open_.empty()) {
            Container& container = open_.back();
            if (container.next == container.count) {
                visitor_.End(*container.value, container.place);
                entries_.resize(container.first_entry);
                open_.pop_back();
            } else {
                Step(container);
            }
        }
    }

private:
    struct Container {
        const MVariant* value;
        VariantPlace place;
        const MVariant* elements;  // null in a map
        std::size_t first_entry;   // in a map
        std::int32_t next;
        std::int32_t count;
    };

    void Visit(const MVariant& value, const VariantPlace& place) {
        visitor_.Begin(value, place);
        if (value.Kind() == MV_VECTOR) {
            const VARIANTVECTOR* const vector = value.Vector();
            open_.push_back({&value, place, vector != nullptr ? vector->begin() : nullptr,
                             entries_.size(), 0, value.Size()});
        } else if (value.Kind() == MV_MAP) {
            const std::size_t first = entries_.size();
            if (value.Map() != nullptr) {
                append_entries(*value.Map(), order_, entries_);
            }
            open_.push_back({&value, place, nullptr, first, 0,
                             static_cast<std::int32_t>(entries_.size() - first)});
        }
    }

    void Step(Container& container) {
        const std::int32_t index = container.next++;
        VariantPlace place{nullptr, container.value, index, container.count,
                           container.place.depth + 1};
        if (container.elements != nullptr) {
            Visit(container.elements[index], place);
        } else {
            const VariantEntry entry =
                entries_[container.first_entry + static_cast<std::size_t>(index)];
            place.key = entry.key.data();
            Visit(*entry.value, place);
        }
    }

    KeyOrder order_;
    Visitor& visitor_;
    std::vector<Container> open_;
    // Those of all open maps, the innermost last.
    std::vector<VariantEntry> entries_;
};

template <typename Visitor>
void traverse(const MVariant& root, KeyOrder order, Visitor& visitor) {
    VariantTraversal<Visitor>(order, visitor).Run(root);
}

}  // namespace zol::support
