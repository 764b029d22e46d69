#include "support/entry_finder.h"

#include "support/strtab_entry.h"
#include "support/variant_traversal.h"

namespace zol::support {

namespace {

// About as many comparisons as a look-up in an index is worth.
constexpr std::int32_t kLongBucket = 64;

}  // namespace

EntryFinder::Index* EntryFinder::IndexOf(const Map& map, const char* key) {
    const auto known = indices_.find(&map);
    if (known != indices_.end()) {
        return &known->second;
    }
    if (array_Count(bucket_of(map.Table(), key)) < kLongBucket) {
        return nullptr;
    }
    Index& index = indices_[&map];
    for_each_entry(map.Table(), [&](const StrtabEntry* entry) {
        index.try_emplace(entry->key, static_cast<MVariant*>(entry->value));
    });
    return &index;
}

MVariant& EntryFinder::Entry(MVariant& map, const char* key) {
    Map& entries = map.OwnMap();
    Index* const index = IndexOf(entries, key);
    if (index == nullptr) {
        return entries.Entry(key);
    }
    const auto found = index->find(key);
    if (found != index->end()) {
        return *found->second;
    }
    const auto [own_key, value] = entries.Add(key);
    index->emplace(own_key, value);
    return *value;
}

void EntryFinder::Forget(const MVariant& value) {
    if (indices_.empty()) {
        return;
    }
    struct Forgetting {
        std::unordered_map<const Map*, Index>& indices;
        void Begin(const MVariant& each, const VariantPlace&) { indices.erase(each.Map()); }
        void End(const MVariant&, const VariantPlace&) {}
    };
    Forgetting forgetting{indices_};
    traverse(value, KeyOrder::kTable, forgetting);
}

}  // namespace zol::support
