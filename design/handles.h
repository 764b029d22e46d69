// The handles of databases, layers and objects, and the tests that their functions put
// them to. No handle knows another: each may be closed first.
#pragma once

#include <memory>
#include <string_view>

#include "api/guard.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "platform/zolDesignExport.h"

struct DatabaseHandle {
    std::unique_ptr<zol::design::Database> database;
};

struct LayerHandle {
    std::unique_ptr<zol::design::Layer> layer;
};

struct ObjectHandle {
    std::unique_ptr<zol::design::Object> object;
};

namespace zol::design::flat {

inline constexpr std::string_view kInvalidIndex = "Invalid index.";

// Each test gives what the handle stands for, or reports the failure and gives null; the
// guard runs it behind the initialised test.

inline Database* open_database(api::Call& call, DatabaseHandle* handle) {
    if (handle == nullptr || handle->database == nullptr) {
        call.Fail("Database not defined.");
        return nullptr;
    }
    return handle->database.get();
}

inline Layer* open_layer(api::Call& call, LayerHandle* handle) {
    if (handle == nullptr || handle->layer == nullptr) {
        call.Fail("Layer not defined.");
        return nullptr;
    }
    return handle->layer.get();
}

inline Object* open_object(api::Call& call, ObjectHandle* handle) {
    if (handle == nullptr || handle->object == nullptr) {
        call.Fail("Object not defined.");
        return nullptr;
    }
    return handle->object.get();
}

}  // namespace zol::design::flat
