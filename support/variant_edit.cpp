// Access to and change of what is in a vector or a map.
#include <algorithm>
#include <bit>
#include <limits>
#include <memory>
#include <new>

#include "support/array.h"
#include "support/string_map.h"
#include "support/value_vector.h"
#include "support/variant.h"
#include "support/variant_traversal.h"

namespace {

using namespace zol::support;

// With room for as many elements.
std::unique_ptr<VARIANTVECTOR> private_copy(const VARIANTVECTOR& shared) {
    auto copy = std::make_unique<VARIANTVECTOR>();
    if (shared.Array().capacity > 0 &&
        array_Resize(&copy->Array(), shared.Array().capacity - 1) == 0) {
        throw std::bad_alloc();
    }
    for (const MVariant& element : shared) {
        array_AddCopy(&copy->Array(), &element);
    }
    return copy;
}

// A new slot at `index`, which is at most the count, with `value` in it.
void insert(array_t& array, std::int32_t index, MVariant value) {
    // Room first: an insertion that fails would leave its mark on the count.
    if (array.count == std::numeric_limits<std::int32_t>::max() ||
        array_Resize(&array, array.count + 1) == 0) {
        throw std::bad_alloc();
    }
    static_cast<MVariant*>(array_InsertAt(&array, index))->swap(value);
}

void reserve(array_t& array, std::int32_t index) {
    if (index < array.capacity) {
        return;
    }
    constexpr std::int64_t kFirstCapacity = 10;
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max() - 1;
    std::int64_t capacity = array.capacity == 0 ? kFirstCapacity : array.capacity;
    while (capacity <= index) {
        capacity *= 2;
    }
    if (array_Resize(&array, static_cast<std::int32_t>(std::min(capacity, kMost))) == 0) {
        throw std::bad_alloc();
    }
}

}  // namespace

VARIANTVECTOR& MVariant::OwnVector() {
    if (kind_ != MV_VECTOR || payload_ == 0) {
        *this = MVariant(MV_VECTOR);
    }
    auto* const vector = std::bit_cast<VARIANTVECTOR*>(payload_);
    if (vector->references <= 1) {
        return *vector;
    }
    VARIANTVECTOR* const own = private_copy(*vector).release();
    --vector->references;
    own->references = 1;
    payload_ = std::bit_cast<std::uint64_t>(own);
    return *own;
}

VStringMap<MVariant>& MVariant::OwnMap() {
    if (kind_ != MV_MAP || payload_ == 0) {
        *this = MVariant(MV_MAP);
    }
    return *std::bit_cast<VStringMap<MVariant>*>(payload_);
}

int MVariant::Size() const {
    if (const VARIANTVECTOR* const vector = Vector()) {
        return vector->Count();
    }
    return Map() != nullptr ? Map()->Count() : 0;
}

MVariant& MVariant::operator[](int index) {
    array_t& array = OwnVector().Array();
    if (index >= array.count) {
        reserve(array, index);
        if (array_Touch(&array, index) == 0) {
            throw std::bad_alloc();
        }
    }
    if (auto* const element = static_cast<MVariant*>(array_Nth(&array, index))) {
        return *element;
    }
    // A negative index, of which the array has told.
    static thread_local MVariant lost;
    lost.Clear();
    return lost;
}

MVariant& MVariant::operator[](const char* key) {
    if (Kind() == MV_MAP) {
        return OwnMap().Entry(key != nullptr ? key : "");
    }
    // Before the old content goes: the key may be of it.
    MVariant map(MV_MAP);
    MVariant& entry = map.OwnMap().Entry(key != nullptr ? key : "");
    swap(map);
    return entry;
}

const MVariant& MVariant::At(int index) const {
    const VARIANTVECTOR* const vector = Vector();
    if (vector == nullptr || index >= vector->Count()) {
        return Empty();
    }
    // The array tells of a negative index.
    const auto* const element = static_cast<const MVariant*>(array_Nth(&vector->Array(), index));
    return element != nullptr ? *element : Empty();
}

const MVariant& MVariant::Get(const char* key) const {
    const MVariant* const found = Map() != nullptr ? Map()->Get(key) : nullptr;
    return found != nullptr ? *found : Empty();
}

bool MVariant::HasKey(const char* key) const {
    return Map() != nullptr && Map()->Get(key) != nullptr;
}

void MVariant::RemoveKey(const char* key) {
    if (Map() != nullptr) {
        OwnMap().Remove(key);
    }
}

MVariant& MVariant::InsertAt(int index, const MVariant& value) {
    // It may stand in this very vector, or be all of it.
    MVariant copy(value);
    array_t& array = OwnVector().Array();
    index = std::max(index, 0);
    insert(array, std::min(index, array.count), std::move(copy));
    return (*this)[index];
}

void MVariant::RemoveAt(int index, int count) {
    const int size = Size();
    if (Vector() == nullptr || index < 0 || index >= size || count == 0) {
        return;
    }
    array_t& array = OwnVector().Array();
    array_DeleteRange(&array, index, std::int64_t{index} + count < size ? count : size - index);
}

std::list<std::string> MVariant::Keys() const {
    std::list<std::string> keys;
    if (Map() != nullptr) {
        Map()->ForEach([&](const char* key, const MVariant&) { keys.emplace_back(key); });
    }
    return keys;
}

std::vector<std::string> MVariant::SortedKeys(bool ignore_case) const {
    std::vector<VariantEntry> entries;
    if (Map() != nullptr) {
        append_entries(*Map(), ignore_case ? KeyOrder::kSortedIgnoringCase : KeyOrder::kSorted,
                       entries);
    }
    std::vector<std::string> keys;
    keys.reserve(entries.size());
    for (const VariantEntry& entry : entries) {
        keys.emplace_back(entry.key);
    }
    return keys;
}
