// Every export of the design family as a row of data: a table for each kind of handle.
#pragma once

#include <array>
#include <memory>

#include "api/zolExportedApi_ReadOnly.h"
#include "tests/api/export_sweep.h"
#include "tests/doubles/scripted_design.h"

namespace zol::testing {

struct CloseHandle {
    void operator()(DatabaseHandle* handle) const { ZOL_Database_Close(handle); }
    void operator()(LayerHandle* handle) const { ZOL_Layer_Close(handle); }
    void operator()(ObjectHandle* handle) const { ZOL_Object_Close(handle); }
};

template <class Handle>
using Owned = std::unique_ptr<Handle, CloseHandle>;

/// Where a call in a sweep writes to, filled with canaries. Calls fill each array from its
/// first element on, in the order of their arguments.
struct DesignOutputs {
    DesignOutputs() {
        for (auto& text : texts) text.fill('#');
    }
    bool operator==(const DesignOutputs&) const = default;

    std::array<double, 5> reals{-77.0, -77.0, -77.0, -77.0, -77.0};
    std::array<int, 4> wholes{-77, -77, -77, -77};
    std::array<std::array<char, 256>, 2> texts;
    Owned<DatabaseHandle> database;
    Owned<LayerHandle> layer;
    Owned<ObjectHandle> object;
};

/// The index that every call of the tables passes.
inline constexpr int kIndex = 1;

/// Scripts a library in which no call of the tables fails: objects are of every kind.
void script_design();

ExportFamily<DatabaseHandle, DesignOutputs> database_family();
ExportFamily<LayerHandle, DesignOutputs> layer_family();
ExportFamily<ObjectHandle, DesignOutputs> object_family();

/// Ends in a layer, and an object, of a database that has been closed already.
LayerHandle* open_layer();
ObjectHandle* open_object();

}  // namespace zol::testing
