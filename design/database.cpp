// Databases: opening and closing, and the catalogue of layers.
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "api/guard.h"
#include "api/marshalling.h"
#include "api/state.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/colour_table.h"
#include "design/handles.h"
#include "design/layer_catalogue.h"
#include "platform/zolDesignExport.h"

using zol::api::Call;
using zol::api::copy_text;
using zol::api::guarded;
using zol::api::guarded_late;
using zol::api::kCount;
using zol::api::kNewHandle;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::design::Database;
using zol::design::Layer;
using zol::design::flat::count_listed;
using zol::design::flat::kInvalidIndex;
using zol::design::flat::open_database;
using zol::design::flat::position_of;

namespace {

/// Appends what the database says to the last-error slot, behind a text that an earlier
/// failure left there and without the name of the function: the one failure that does not
/// replace the text. Callers know it so.
void append_reasons(const Database& database) {
    std::string text;
    const char* between = "";
    for (const std::string& line : database.GetError()) {
        text += between;
        text += line;
        between = "\n";
    }
    zol::api::state.last_error += text;
}

std::unique_ptr<LayerHandle> new_layer() {
    auto handle = std::make_unique<LayerHandle>();
    handle->layer = std::make_unique<Layer>();
    return handle;
}

}  // namespace

DatabaseHandle* ZOL_Database_Open(const char* file_name) {
    return guarded(__func__, kNewHandle<DatabaseHandle>,
                   [&](Call& call) -> Outcome<DatabaseHandle*> {
                       const std::string file(file_name);
                       auto database = std::make_unique<Database>();
                       if (!database->Open(file, "read")) {
                           if (!database->HasError()) {
                               return call.Fail("Error opening database " + file);
                           }
                           append_reasons(*database);
                           return std::nullopt;
                       }
                       auto handle = std::make_unique<DatabaseHandle>();
                       handle->database = std::move(database);
                       zol::design::flat::take_colours(*handle->database);
                       return handle.release();
                   });
}

int ZOL_Database_Close(DatabaseHandle* handle) {
    return guarded(__func__, kStatus, open_database, handle,
                   [&](Call& call, Database& database) -> Outcome<int> {
                       database.Close(false);
                       if (database.HasError()) {
                           // The handle and the colours stay: the caller may try again.
                           return call.Fail("error closing " + database.GetName());
                       }
                       handle->database.reset();
                       delete handle;
                       // Of whichever database they were.
                       zol::design::flat::forget_colours();
                       return 0;
                   });
}

int ZOL_Database_IsOpen(DatabaseHandle* handle) {
    return guarded_late(__func__, kPredicate, open_database, handle,
                        [](const Database& database) { return database.IsOpen() ? 1 : 0; });
}

int ZOL_Database_GetName(DatabaseHandle* handle, char* buffer) {
    return guarded(__func__, kStatus, open_database, handle,
                   [&](const Database& database) { copy_text(database.GetName(), buffer); });
}

int ZOL_Database_NLayers(DatabaseHandle* handle) {
    // An order of its own: the error is emptied ahead of the list, the call is counted
    // behind the walk.
    return guarded(__func__, kCount, open_database, handle, [](Call& call, Database& database) {
        call.EmptyError();
        return count_listed(database.GetLayerList());
    });
}

int ZOL_Database_LayerExists(DatabaseHandle* handle, const char* name) {
    // The name as it is, unlike ZOL_Database_GetLayerByName.
    return guarded(__func__, kPredicate, open_database, handle,
                   [&](const Database& database) { return database.Exists(name) ? 1 : 0; });
}

int ZOL_Database_GetLayerNameByIndex(DatabaseHandle* handle, const int* index, char* buffer) {
    return guarded(__func__, kStatus, open_database, handle,
                   [&](Call& call, Database& database) -> Outcome<int> {
                       const std::vector<std::string>& names = database.GetLayerList();
                       const std::optional<int> position = position_of(names, *index);
                       if (!position) {
                           return call.Fail(kInvalidIndex);
                       }
                       copy_text(names[static_cast<std::size_t>(*position)], buffer);
                       return 0;
                   });
}

LayerHandle* ZOL_Database_GetLayerByIndex(DatabaseHandle* handle, const int* index) {
    return guarded(__func__, kNewHandle<LayerHandle>, open_database, handle,
                   [&](Call& call, Database& database) -> Outcome<LayerHandle*> {
                       // A coarse test first, against the number of all layers.
                       const int catalogue_index = *index;
                       if (catalogue_index < 0 || catalogue_index >= database.NLayers()) {
                           return call.Fail(kInvalidIndex);
                       }
                       const auto position = position_of(database.GetLayerList(), catalogue_index);
                       if (!position) {
                           return call.Fail(kInvalidIndex);
                       }
                       std::unique_ptr<LayerHandle> made = new_layer();
                       if (!database.Get(*position, made->layer.get())) {
                           // The index ends the text as one byte, its low eight bits, not as
                           // digits. It may be a NUL. Callers know it so.
                           std::string text = "Error retrieving layer ";
                           text.push_back(static_cast<char>(catalogue_index));
                           return call.Fail(text);
                       }
                       return made.release();
                   });
}

LayerHandle* ZOL_Database_GetLayerByName(DatabaseHandle* handle, const char* name) {
    return guarded(
        __func__, kNewHandle<LayerHandle>, open_database, handle,
        [&](Call& call, Database& database) -> Outcome<LayerHandle*> {
            std::unique_ptr<LayerHandle> made = new_layer();
            const std::string given(name);
            if (!database.Get(zol::design::GetValidLayerName(given), made->layer.get())) {
                return call.Fail("Error retrieving layer " + given);
            }
            return made.release();
        });
}
