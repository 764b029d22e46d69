// Entries of maps for readers. A text can be made so that all its keys fall into one bucket
// of the table, and each look-up there goes through all that came before; so a map whose
// bucket has grown long gets an index in the order of its keys, which no choice of keys can
// spoil. The table itself stays as it is.
#pragma once

#include <map>
#include <string_view>
#include <unordered_map>

#include "support/string_map.h"
#include "support/variant.h"

namespace zol::support {

/// For as long as one value is read, and nothing else changes it.
class EntryFinder {
public:
    /// The same as `map[key]`, for a value that is a map. Throws std::bad_alloc.
    MVariant& Entry(MVariant& map, const char* key);
    /// To be called before a value is overwritten: its maps go, and others may come to stand
    /// in their place.
    void Forget(const MVariant& value);

private:
    using Map = VStringMap<MVariant>;
    /// The keys are the table's own.
    using Index = std::map<std::string_view, MVariant*>;

    /// Null while the bucket that the key falls into is short.
    Index* IndexOf(const Map& map, const char* key);

    std::unordered_map<const Map*, Index> indices_;
};

}  // namespace zol::support
