// What a block model says about itself as a whole: where it lies, how many blocks
// it has and by which schemas they are laid out.
#include "api/guard.h"
#include "api/index.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "block/handle.h"
#include "platform/zolBlockExport.h"

using zol::api::Call;
using zol::api::FunctionId;
using zol::api::guarded;
using zol::api::guarded_late;
using zol::api::is_index;
using zol::api::kCount;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::kWide;
using zol::api::Outcome;
using zol::api::store;
using zol::api::store_zeros;
using zol::block::kInvalidIndex;
using zol::block::open_model;
using zol::geometry::Coord3D;
using zol::model::block::Model;
using zol::model::block::Schema;

namespace {

/// The model test with zeros stored ahead of it: callers see them, and their
/// pointers are written through, even for a null handle.
template <class... Out>
auto open_model_after_zeros(Out*... out) {
    return [=](Call& call, BlockModelHandle* handle) {
        store_zeros(out...);
        return open_model(call, handle);
    };
}

int convert_point(FunctionId function, BlockModelHandle* handle,
                  Coord3D (Model::*conversion)(double, double, double) const, const double* in_x,
                  const double* in_y, const double* in_z, double* out_x, double* out_y,
                  double* out_z) {
    return guarded(function, kStatus, open_model, handle, [&](const Model& model) {
        // Before the inputs are read: a caller who passes the same variables for both
        // converts the point (0, 0, 0).
        store_zeros(out_x, out_y, out_z);
        store((model.*conversion)(*in_x, *in_y, *in_z), out_x, out_y, out_z);
    });
}

/// Hands the schema that `index` names to `use`. The index counts original schemas
/// but is tested against the number of all: one that passes and names none gives 1
/// by way of the success exit, without a message.
template <class Use>
int with_schema(FunctionId function, BlockModelHandle* handle, const int* index, Use use) {
    return guarded(function, kStatus, open_model, handle,
                   [&](Call& call, const Model& model) -> Outcome<int> {
                       const int count = model.NSchemas();
                       if (!is_index(*index, count)) {
                           return call.Fail(kInvalidIndex);
                       }
                       int ordinal = 0;
                       for (int position = 0; position < count; ++position) {
                           const Schema schema = model.GetSchema(position);
                           if (!schema.IsOriginal()) {
                               continue;
                           }
                           if (ordinal == *index) {
                               use(schema);
                               return 0;
                           }
                           ++ordinal;
                       }
                       return 1;
                   });
}

}  // namespace

int ZOL_BlockModel_GetModelExtent(BlockModelHandle* handle, double* lower_x, double* lower_y,
                                  double* lower_z, double* upper_x, double* upper_y,
                                  double* upper_z) {
    return guarded(__func__, kStatus,
                   open_model_after_zeros(lower_x, lower_y, lower_z, upper_x, upper_y, upper_z),
                   handle, [&](const Model& model) {
                       store(model.GetModelExtent(), lower_x, lower_y, lower_z, upper_x, upper_y,
                             upper_z);
                   });
}

int ZOL_BlockModel_GetModelOrigin(BlockModelHandle* handle, double* x, double* y, double* z) {
    return guarded(__func__, kStatus, open_model_after_zeros(x, y, z), handle,
                   [&](const Model& model) { store(model.GetModelOrigin(), x, y, z); });
}

int ZOL_BlockModel_GetModelOrientation(BlockModelHandle* handle, double* about_z, double* about_y,
                                       double* about_x) {
    return guarded(
        __func__, kStatus, open_model_after_zeros(about_z, about_y, about_x), handle,
        [&](const Model& model) { store(model.GetModelOrientation(), about_z, about_y, about_x); });
}

int ZOL_BlockModel_ModelToWorld(BlockModelHandle* handle, const double* model_x,
                                const double* model_y, const double* model_z, double* world_x,
                                double* world_y, double* world_z) {
    return convert_point(__func__, handle, &Model::ToWorld, model_x, model_y, model_z, world_x,
                         world_y, world_z);
}

int ZOL_BlockModel_WorldToModel(BlockModelHandle* handle, const double* world_x,
                                const double* world_y, const double* world_z, double* model_x,
                                double* model_y, double* model_z) {
    return convert_point(__func__, handle, &Model::ToModel, world_x, world_y, world_z, model_x,
                         model_y, model_z);
}

int ZOL_BlockModel_IsStratigraphicModel(BlockModelHandle* handle) {
    return guarded_late(__func__, kPredicate, open_model, handle,
                        [](const Model& model) { return model.IsStrat(); });
}

long long ZOL_BlockModel_NBlocks(BlockModelHandle* handle) {
    return guarded_late(__func__, kWide, open_model, handle,
                        [](const Model& model) { return model.NBlocks(); });
}

int ZOL_BlockModel_NSchemas(BlockModelHandle* handle) {
    return guarded(__func__, kCount, open_model, handle, [](const Model& model) {
        // The first schema counts unasked, even where there is none.
        int originals = 1;
        const int count = model.NSchemas();
        for (int position = 1; position < count; ++position) {
            originals += model.GetSchema(position).IsOriginal() ? 1 : 0;
        }
        return originals;
    });
}

int ZOL_BlockModel_GetSchemaExtent(BlockModelHandle* handle, const int* index, double* lower_x,
                                   double* lower_y, double* lower_z, double* upper_x,
                                   double* upper_y, double* upper_z) {
    return with_schema(__func__, handle, index, [&](const Schema& schema) {
        store(schema.GetExtent(), lower_x, lower_y, lower_z, upper_x, upper_y, upper_z);
    });
}

int ZOL_BlockModel_GetSchemaDimensions(BlockModelHandle* handle, const int* index, double* x,
                                       double* y, double* z) {
    return with_schema(__func__, handle, index,
                       [&](const Schema& schema) { store(schema.GetDimensions(), x, y, z); });
}

int ZOL_BlockModel_GetSchemaSizes(BlockModelHandle* handle, const int* index, double* least_x,
                                  double* least_y, double* least_z, double* greatest_x,
                                  double* greatest_y, double* greatest_z) {
    return with_schema(__func__, handle, index, [&](const Schema& schema) {
        store(schema.GetMinimumSize(), least_x, least_y, least_z);
        store(schema.GetMaximumSize(), greatest_x, greatest_y, greatest_z);
    });
}
