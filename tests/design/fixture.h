// A database, one of its layers and an object of that, opened on the scripted library.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "api/zolExportedApi_ReadOnly.h"
#include "design/handles.h"
#include "tests/api/pending_error.h"
#include "tests/design/export_table.h"
#include "tests/doubles/scripted_design.h"

namespace zol::testing {

using Texts = std::vector<std::string>;

class DesignFixture : public ::testing::Test {
protected:
    DesignFixture() {
        doubles::design_script = {};
        ZOL_API_Init();
        database_.reset(ZOL_Database_Open("mine"));
        layer_.reset(ZOL_Database_GetLayerByIndex(database_.get(), &kIndex));
        object_.reset(ZOL_Layer_GetObject(layer_.get(), &kIndex));
        doubles::design_journal.clear();
    }

    ~DesignFixture() override { doubles::design_script = {}; }

    /// Calls the export of that name as its row has it.
    double Call(const std::string& name, DesignOutputs& to) {
        if (const auto result = CallOf(database_family(), database_.get(), name, to)) {
            return *result;
        }
        if (const auto result = CallOf(layer_family(), layer_.get(), name, to)) {
            return *result;
        }
        return CallOf(object_family(), object_.get(), name, to).value();
    }

    Owned<DatabaseHandle> database_;
    Owned<LayerHandle> layer_;
    Owned<ObjectHandle> object_;

private:
    template <class Handle>
    static std::optional<double> CallOf(const ExportFamily<Handle, DesignOutputs>& family,
                                        Handle* handle, const std::string& name,
                                        DesignOutputs& to) {
        for (const auto& row : family.rows) {
            if (name == row.name) {
                return row.call(handle, to);
            }
        }
        return std::nullopt;
    }
};

}  // namespace zol::testing
