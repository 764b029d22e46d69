#include "tests/block/export_table.h"

#include <cstdint>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "block/handle.h"
#include "tests/doubles/scripted_block.h"

namespace zol::testing {
namespace {

/// Fills the parameters of an export by their types.
class Arguments {
public:
    Arguments(BlockModelHandle* handle, BlockModelOutputs& outputs)
        : handle_(handle), outputs_(outputs) {}

    template <class T>
    T Next() {
        if constexpr (std::is_same_v<T, BlockModelHandle*>) {
            return handle_;
        } else if constexpr (std::is_same_v<T, const char*>) {
            return "grade";
        } else if constexpr (std::is_same_v<T, const int*>) {
            return &index_;
        } else if constexpr (std::is_same_v<T, const double*>) {
            return &coordinate_;
        } else if constexpr (std::is_same_v<T, const long long*>) {
            return &position_;
        } else if constexpr (std::is_same_v<T, double*>) {
            return &outputs_.numbers.at(numbers_given_++);
        } else if constexpr (std::is_same_v<T, int*>) {
            return &outputs_.code;
        } else {
            static_assert(std::is_same_v<T, char*>);
            return outputs_.text.data();
        }
    }

private:
    BlockModelHandle* handle_;
    BlockModelOutputs& outputs_;
    std::size_t numbers_given_ = 0;
    const int index_ = 0;
    const double coordinate_ = 0.5;
    const long long position_ = 0;
};

template <class R, class... A>
double call_with(R (*function)(A...), BlockModelHandle* handle, BlockModelOutputs& outputs) {
    Arguments arguments(handle, outputs);
    // Braces: the arguments are made from the first to the last.
    const R result = std::apply(function, std::tuple<A...>{arguments.Next<A>()...});
    if constexpr (std::is_pointer_v<R>) {
        outputs.made = result;
        return result != nullptr ? 1 : 0;
    } else {
        return static_cast<double>(result);
    }
}

template <auto Function>
double call(BlockModelHandle* handle, BlockModelOutputs& outputs) {
    return call_with(Function, handle, outputs);
}

// clang-format off
constexpr BlockModelExport kExports[] = {
    // name, call, not initialised, without a model: result, text; first operation, order, outputs cleared
    {"ZOL_BlockModel_Open", call<ZOL_BlockModel_Open>, 0, 0,
     nullptr, "Model::Model"},
    {"ZOL_BlockModel_Close", call<ZOL_BlockModel_Close>, -1, 1,
     "ZOL_BlockModel_Close no model currently open.", "Model::Close"},
    {"ZOL_BlockModel_IsOpen", call<ZOL_BlockModel_IsOpen>, -1, 0,
     nullptr, "Model::IsOpen", Order::kSuccessFirst},
    {"ZOL_BlockModel_GetModelExtent", call<ZOL_BlockModel_GetModelExtent>, -1, 1,
     "ZOL_BlockModel_GetModelExtent no model currently open.", "Model::GetModelExtent", Order::kWorkFirst, 6},
    {"ZOL_BlockModel_GetModelOrigin", call<ZOL_BlockModel_GetModelOrigin>, -1, 1,
     "ZOL_BlockModel_GetModelOrigin no model currently open.", "Model::GetModelOrigin", Order::kWorkFirst, 3},
    {"ZOL_BlockModel_GetModelOrientation", call<ZOL_BlockModel_GetModelOrientation>, -1, 1,
     "ZOL_BlockModel_GetModelOrientation no model currently open.", "Model::GetModelOrientation", Order::kWorkFirst, 3},
    {"ZOL_BlockModel_ModelToWorld", call<ZOL_BlockModel_ModelToWorld>, -1, 1,
     "ZOL_BlockModel_ModelToWorld no model currently open.", "Model::ToWorld"},
    {"ZOL_BlockModel_WorldToModel", call<ZOL_BlockModel_WorldToModel>, -1, 1,
     "ZOL_BlockModel_WorldToModel no model currently open.", "Model::ToModel"},
    {"ZOL_BlockModel_IsStratigraphicModel", call<ZOL_BlockModel_IsStratigraphicModel>, -1, -1,
     "ZOL_BlockModel_IsStratigraphicModel no model currently open.", "Model::IsStrat", Order::kSuccessFirst},
    {"ZOL_BlockModel_NBlocks", call<ZOL_BlockModel_NBlocks>, -1, -1,
     "ZOL_BlockModel_NBlocks no model currently open.", "Model::NBlocks", Order::kSuccessFirst},
    {"ZOL_BlockModel_NSchemas", call<ZOL_BlockModel_NSchemas>, -1, -1,
     "ZOL_BlockModel_NSchemas no model currently open.", "Model::NSchemas"},
    {"ZOL_BlockModel_GetSchemaExtent", call<ZOL_BlockModel_GetSchemaExtent>, -1, 1,
     "ZOL_BlockModel_GetSchemaExtent no model currently open.", "Model::NSchemas"},
    {"ZOL_BlockModel_GetSchemaDimensions", call<ZOL_BlockModel_GetSchemaDimensions>, -1, 1,
     "ZOL_BlockModel_GetSchemaDimensions no model currently open.", "Model::NSchemas"},
    {"ZOL_BlockModel_GetSchemaSizes", call<ZOL_BlockModel_GetSchemaSizes>, -1, 1,
     "ZOL_BlockModel_GetSchemaSizes no model currently open.", "Model::NSchemas"},
    {"ZOL_BlockModel_NVariables", call<ZOL_BlockModel_NVariables>, -1, -1,
     "ZOL_BlockModel_NVariables no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetVariableName", call<ZOL_BlockModel_GetVariableName>, -1, 1,
     "ZOL_BlockModel_GetVariableName no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_NPredefinedVariables", call<ZOL_BlockModel_NPredefinedVariables>, -1, -1,
     "ZOL_BlockModel_NPredefinedVariables no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetPredefinedVariableName", call<ZOL_BlockModel_GetPredefinedVariableName>, -1, 1,
     "ZOL_BlockModel_GetPredefinedVariableName no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_NClassificationVariables", call<ZOL_BlockModel_NClassificationVariables>, -1, -1,
     "ZOL_BlockModel_NClassificationVariables no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetClassificationVariableName", call<ZOL_BlockModel_GetClassificationVariableName>, -1, 1,
     "ZOL_BlockModel_GetClassificationVariableName no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_NNumericVariables", call<ZOL_BlockModel_NNumericVariables>, -1, -1,
     "ZOL_BlockModel_NNumericVariables no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetNumericVariableName", call<ZOL_BlockModel_GetNumericVariableName>, -1, 1,
     "ZOL_BlockModel_GetNumericVariableName no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_NStringVariables", call<ZOL_BlockModel_NStringVariables>, -1, -1,
     "ZOL_BlockModel_NStringVariables no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetStringVariableName", call<ZOL_BlockModel_GetStringVariableName>, -1, 1,
     "ZOL_BlockModel_GetStringVariableName no model currently open.", "Model::GetFieldVector"},
    {"ZOL_BlockModel_NTranslations", call<ZOL_BlockModel_NTranslations>, -1, -1,
     "ZOL_BlockModel_NTranslations no model currently open.", "Model::GetFieldTranslations", Order::kSuccessFirst},
    {"ZOL_BlockModel_GetTranslationName", call<ZOL_BlockModel_GetTranslationName>, -1, 1,
     "ZOL_BlockModel_GetTranslationName no model currently open.", "Model::GetFieldTranslations"},
    {"ZOL_BlockModel_GetVariableDescription", call<ZOL_BlockModel_GetVariableDescription>, -1, 1,
     "ZOL_BlockModel_GetDescription no model currently open.", "Model::GetFieldDescription"},
    {"ZOL_BlockModel_GetVariableType", call<ZOL_BlockModel_GetVariableType>, -1, -1,
     "ZOL_BlockModel_GetVariableType no model currently open.", "Model::IsPredefined", Order::kEmptiedThenCounted},
    {"ZOL_BlockModel_GetDefaultNumber", call<ZOL_BlockModel_GetDefaultNumber>, -1, 1,
     "ZOL_BlockModel_GetDefaultNumber no model currently open.", "Model::GetFieldDefault"},
    {"ZOL_BlockModel_GetDefaultString", call<ZOL_BlockModel_GetDefaultString>, -1, 1,
     "ZOL_BlockModel_GetDefaultString no model currently open.", "Model::GetFieldDefaultString"},
    {"ZOL_BlockModel_IsNumber", call<ZOL_BlockModel_IsNumber>, -1, -1,
     "ZOL_BlockModel_IsNumber no model currently open.", "Model::IsNumber", Order::kSuccessFirst},
    {"ZOL_BlockModel_IsString", call<ZOL_BlockModel_IsString>, -1, -1,
     "ZOL_BlockModel_IsString no model currently open.", "Model::IsString", Order::kSuccessFirst},
    {"ZOL_BlockModel_FirstBlock", call<ZOL_BlockModel_FirstBlock>, -1, 1,
     "ZOL_BlockModel_FirstBlock no model currently open or blocks matched.", "Model::FindFirst"},
    {"ZOL_BlockModel_NextBlock", call<ZOL_BlockModel_NextBlock>, -1, 1,
     "ZOL_BlockModel_NextBlock no model currently open or blocks matched.", "Model::Next"},
    {"ZOL_BlockModel_IsEof", call<ZOL_BlockModel_IsEof>, -1, -1,
     "ZOL_BlockModel_IsEof no model currently open or blocks matched.", "Model::IsEof", Order::kSuccessFirst},
    {"ZOL_BlockModel_GetPosition", call<ZOL_BlockModel_GetPosition>, -1, -1,
     "ZOL_BlockModel_GetPosition no model currently open or blocks matched.", "Model::GetPosition"},
    {"ZOL_BlockModel_GetNumber", call<ZOL_BlockModel_GetNumber>, -1, 1,
     "ZOL_BlockModel_GetNumber no model currently open or blocks matched.", "Model::Get"},
    {"ZOL_BlockModel_GetString", call<ZOL_BlockModel_GetString>, -1, 1,
     "ZOL_BlockModel_GetString no model currently open or blocks matched.", "Model::GetString"},
    {"ZOL_BlockModel_GetBlockExtent", call<ZOL_BlockModel_GetBlockExtent>, -1, 1,
     "ZOL_BlockModel_GetBlockExtent no model currently open or blocks matched.", "Model::GetBlockExtent"},
    {"ZOL_BlockModel_SetPosition", call<ZOL_BlockModel_SetPosition>, -1, 1,
     "ZOL_BlockModel_SetPosition no model currently open.", "Model::SetPosition"},
    {"ZOL_BlockModel_FindXyz", call<ZOL_BlockModel_FindXyz>, -1, -1,
     "ZOL_BlockModel_FindXyz no model currently open.", "Model::FindXyz", Order::kSuccessFirst},
    {"ZOL_BlockModel_FindWorldXyz", call<ZOL_BlockModel_FindWorldXyz>, -1, -1,
     "ZOL_BlockModel_FindWorldXyz no model currently open.", "Model::FindWorldXyz", Order::kSuccessFirst},
    {"ZOL_BlockModel_AddMatchTriangulation", call<ZOL_BlockModel_AddMatchTriangulation>, -1, 1,
     "ZOL_BlockModel_AddMatchTriangulation no model currently open or blocks matched.", "Model::GetMatch"},
    {"ZOL_BlockModel_SetMatchExtent", call<ZOL_BlockModel_SetMatchExtent>, -1, 1,
     "ZOL_BlockModel_SetMatchExtent no model currently open or blocks matched.", "Model::GetMatch"},
    {"ZOL_BlockModel_SetUseExactVolume", call<ZOL_BlockModel_SetUseExactVolume>, -1, 1,
     "ZOL_BlockModel_SetUseExactVolume no model currently open or blocks matched.", "Model::GetMatch"},
    {"ZOL_BlockModel_ClearMatch", call<ZOL_BlockModel_ClearMatch>, -1, 1,
     "ZOL_BlockModel_ClearMatch no blocks currently matched.", "Match::Close"},
    {"ZOL_BlockModel_GetBlockMatchExtent", call<ZOL_BlockModel_GetBlockMatchExtent>, -1, 1,
     "ZOL_BlockModel_GetBlockMatchExtent no blocks currently matched.", "Match::GetMatchExtent"},
    {"ZOL_BlockModel_GetBlockMatchVolume", call<ZOL_BlockModel_GetBlockMatchVolume>, -1, -1,
     "ZOL_BlockModel_GetBlockMatchVolume no blocks currently matched.", "Match::GetMatchVolume", Order::kSuccessFirst},
};
// clang-format on

bool needs_a_match(const BlockModelExport& row) {
    return row.undefined_text != nullptr &&
           std::string_view(row.undefined_text).ends_with("currently matched.");
}

/// A script by which no export fails.
void script_success() {
    doubles::script = {};
    doubles::script.schemas.resize(1);
    for (const int selector : {1, 2, 4, 9, 17}) {
        doubles::script.fields[selector] = {"grade"};
    }
    doubles::script.translations = {"ore"};
}

}  // namespace

BlockModelOutputs::BlockModelOutputs() : code(-77) {
    numbers.fill(-77.0);
    text.fill('#');
}

bool takes_a_match(const BlockModelExport& row) {
    return row.undefined_text != nullptr &&
           std::string_view(row.undefined_text).ends_with(" matched.");
}

ExportFamily<BlockModelHandle, BlockModelOutputs> block_model_family() {
    return {"ZOL_BlockModel_",
            kExports,
            [](const BlockModelExport& row) {
                script_success();
                BlockModelHandle* const handle = ZOL_BlockModel_Open("model");
                if (needs_a_match(row)) handle->match = &handle->model->GetMatch();
                return handle;
            },
            ZOL_BlockModel_Close,
            &doubles::journal,
            &doubles::script.throwing};
}

}  // namespace zol::testing
