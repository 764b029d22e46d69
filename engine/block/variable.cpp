#include "engine/block/variable.h"

#include <array>

namespace zol::engine::block {

namespace {

// In the order of Storage.
constexpr std::array<std::string_view, 9> kStorageNames = {
    "bit", "byte", "short", "sfloat", "integer", "int64", "float", "double", "string",
};

}  // namespace

std::string_view storage_name(Storage storage) {
    return kStorageNames[static_cast<std::size_t>(storage)];
}

bool storage_from_name(std::string_view name, Storage& storage) {
    for (std::size_t i = 0; i < kStorageNames.size(); ++i) {
        if (kStorageNames[i] == name) {
            storage = static_cast<Storage>(i);
            return true;
        }
    }
    return false;
}

}  // namespace zol::engine::block
