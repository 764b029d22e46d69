// Values as entries of the user's value store.
#include <cstdint>

#include "support/value_store.h"
#include "support/variant.h"

namespace {

/// A record has to stay below so many bytes.
constexpr std::uint32_t kRecordLimit = 10240;

}  // namespace

bool MVariant::ReadRegistry(const char* root, const char* subkey, const char* name) {
    const auto record = store_Read({root, subkey, name});
    if (!record) return false;
    FromBinary(record->data(), record->size());
    return true;
}

bool MVariant::WriteRegistry(const char* root, const char* subkey, const char* name) const {
    const std::uint32_t size = BinarySize();
    if (size == 0 || size >= kRecordLimit) return false;
    const auto record = ToBinary();
    return store_Write({root, subkey, name}, {record.get(), size});
}
