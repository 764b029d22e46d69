// A layer: what it is called, and its objects.
#include <memory>

#include "api/guard.h"
#include "api/index.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "design/handles.h"
#include "platform/zolDesignExport.h"

using zol::api::Call;
using zol::api::copy_text;
using zol::api::guarded;
using zol::api::guarded_late;
using zol::api::is_index;
using zol::api::kCount;
using zol::api::kNewHandle;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::design::Layer;
using zol::design::Object;
using zol::design::flat::kInvalidIndex;
using zol::design::flat::open_layer;

int ZOL_Layer_Close(LayerHandle* handle) {
    // -1 for a layer that is not defined, where a database gives 1.
    return guarded(__func__, kStatus.Failing(-1), open_layer, handle, [&](Layer&) {
        handle->layer.reset();
        delete handle;
    });
}

int ZOL_Layer_GetName(LayerHandle* handle, char* buffer) {
    return guarded(__func__, kStatus, open_layer, handle,
                   [&](const Layer& layer) { copy_text(layer.GetName(), buffer); });
}

int ZOL_Layer_GetDescription(LayerHandle* handle, char* buffer) {
    return guarded(__func__, kStatus, open_layer, handle,
                   [&](const Layer& layer) { copy_text(layer.GetDescription(), buffer); });
}

int ZOL_Layer_IsEdited(LayerHandle* handle) {
    return guarded(__func__, kPredicate, open_layer, handle,
                   [](const Layer& layer) { return layer.IsEdited() ? 1 : 0; });
}

int ZOL_Layer_NObjects(LayerHandle* handle) {
    return guarded_late(__func__, kCount, open_layer, handle,
                        [](const Layer& layer) { return layer.NObjects(); });
}

ObjectHandle* ZOL_Layer_GetObject(LayerHandle* handle, const int* index) {
    return guarded(__func__, kNewHandle<ObjectHandle>, open_layer, handle,
                   [&](Call& call, Layer& layer) -> Outcome<ObjectHandle*> {
                       if (!is_index(*index, layer.NObjects())) {
                           return call.Fail(kInvalidIndex);
                       }
                       auto made = std::make_unique<ObjectHandle>();
                       made->object = std::make_unique<Object>();
                       // Handed out whatever the layer says: the type of an object in error
                       // can't be read, and that is where a caller learns of it.
                       layer.GetObject(*index, made->object.get());
                       return made.release();
                   });
}
