#include "tests/block/export_table.h"

#include <cstdint>
#include <tuple>
#include <type_traits>

namespace zol::testing {
namespace {

/// Fills the parameters of an export by their types.
class Arguments {
public:
    Arguments(BlockModelHandle* handle, Outputs& outputs) : handle_(handle), outputs_(outputs) {}

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
    Outputs& outputs_;
    std::size_t numbers_given_ = 0;
    const int index_ = 0;
    const double coordinate_ = 0.5;
    const long long position_ = 0;
};

template <class R, class... A>
long long call_with(R (*function)(A...), BlockModelHandle* handle, Outputs& outputs) {
    Arguments arguments(handle, outputs);
    // Braces: the arguments are made from the first to the last.
    const R result = std::apply(function, std::tuple<A...>{arguments.Next<A>()...});
    if constexpr (std::is_pointer_v<R>) {
        outputs.made = result;
        return result != nullptr ? 1 : 0;
    } else {
        return static_cast<long long>(result);
    }
}

template <auto Function>
long long call(BlockModelHandle* handle, Outputs& outputs) {
    return call_with(Function, handle, outputs);
}

// clang-format off
constexpr Export kExports[] = {
    // name, call, not initialised, without a model: result, text, zeros; first operation, order
    {"ZOL_BlockModel_Open", call<ZOL_BlockModel_Open>, 0, 0,
     nullptr, 0, "Model::Model"},
    {"ZOL_BlockModel_Close", call<ZOL_BlockModel_Close>, -1, 1,
     "ZOL_BlockModel_Close no model currently open.", 0, "Model::Close"},
    {"ZOL_BlockModel_IsOpen", call<ZOL_BlockModel_IsOpen>, -1, 0,
     nullptr, 0, "Model::IsOpen", Order::kSuccessFirst},
    {"ZOL_BlockModel_GetModelExtent", call<ZOL_BlockModel_GetModelExtent>, -1, 1,
     "ZOL_BlockModel_GetModelExtent no model currently open.", 6, "Model::GetModelExtent"},
    {"ZOL_BlockModel_GetModelOrigin", call<ZOL_BlockModel_GetModelOrigin>, -1, 1,
     "ZOL_BlockModel_GetModelOrigin no model currently open.", 3, "Model::GetModelOrigin"},
    {"ZOL_BlockModel_GetModelOrientation", call<ZOL_BlockModel_GetModelOrientation>, -1, 1,
     "ZOL_BlockModel_GetModelOrientation no model currently open.", 3, "Model::GetModelOrientation"},
    {"ZOL_BlockModel_ModelToWorld", call<ZOL_BlockModel_ModelToWorld>, -1, 1,
     "ZOL_BlockModel_ModelToWorld no model currently open.", 0, "Model::ToWorld"},
    {"ZOL_BlockModel_WorldToModel", call<ZOL_BlockModel_WorldToModel>, -1, 1,
     "ZOL_BlockModel_WorldToModel no model currently open.", 0, "Model::ToModel"},
    {"ZOL_BlockModel_IsStratigraphicModel", call<ZOL_BlockModel_IsStratigraphicModel>, -1, -1,
     "ZOL_BlockModel_IsStratigraphicModel no model currently open.", 0, "Model::IsStrat", Order::kSuccessFirst},
    {"ZOL_BlockModel_NBlocks", call<ZOL_BlockModel_NBlocks>, -1, -1,
     "ZOL_BlockModel_NBlocks no model currently open.", 0, "Model::NBlocks", Order::kSuccessFirst},
    {"ZOL_BlockModel_NSchemas", call<ZOL_BlockModel_NSchemas>, -1, -1,
     "ZOL_BlockModel_NSchemas no model currently open.", 0, "Model::NSchemas"},
    {"ZOL_BlockModel_GetSchemaExtent", call<ZOL_BlockModel_GetSchemaExtent>, -1, 1,
     "ZOL_BlockModel_GetSchemaExtent no model currently open.", 0, "Model::NSchemas"},
    {"ZOL_BlockModel_GetSchemaDimensions", call<ZOL_BlockModel_GetSchemaDimensions>, -1, 1,
     "ZOL_BlockModel_GetSchemaDimensions no model currently open.", 0, "Model::NSchemas"},
    {"ZOL_BlockModel_GetSchemaSizes", call<ZOL_BlockModel_GetSchemaSizes>, -1, 1,
     "ZOL_BlockModel_GetSchemaSizes no model currently open.", 0, "Model::NSchemas"},
    {"ZOL_BlockModel_NVariables", call<ZOL_BlockModel_NVariables>, -1, -1,
     "ZOL_BlockModel_NVariables no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetVariableName", call<ZOL_BlockModel_GetVariableName>, -1, 1,
     "ZOL_BlockModel_GetVariableName no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_NPredefinedVariables", call<ZOL_BlockModel_NPredefinedVariables>, -1, -1,
     "ZOL_BlockModel_NPredefinedVariables no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetPredefinedVariableName", call<ZOL_BlockModel_GetPredefinedVariableName>, -1, 1,
     "ZOL_BlockModel_GetPredefinedVariableName no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_NClassificationVariables", call<ZOL_BlockModel_NClassificationVariables>, -1, -1,
     "ZOL_BlockModel_NClassificationVariables no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetClassificationVariableName", call<ZOL_BlockModel_GetClassificationVariableName>, -1, 1,
     "ZOL_BlockModel_GetClassificationVariableName no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_NNumericVariables", call<ZOL_BlockModel_NNumericVariables>, -1, -1,
     "ZOL_BlockModel_NNumericVariables no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetNumericVariableName", call<ZOL_BlockModel_GetNumericVariableName>, -1, 1,
     "ZOL_BlockModel_GetNumericVariableName no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_NStringVariables", call<ZOL_BlockModel_NStringVariables>, -1, -1,
     "ZOL_BlockModel_NStringVariables no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_GetStringVariableName", call<ZOL_BlockModel_GetStringVariableName>, -1, 1,
     "ZOL_BlockModel_GetStringVariableName no model currently open.", 0, "Model::GetFieldVector"},
    {"ZOL_BlockModel_NTranslations", call<ZOL_BlockModel_NTranslations>, -1, -1,
     "ZOL_BlockModel_NTranslations no model currently open.", 0, "Model::GetFieldTranslations", Order::kSuccessFirst},
    {"ZOL_BlockModel_GetTranslationName", call<ZOL_BlockModel_GetTranslationName>, -1, 1,
     "ZOL_BlockModel_GetTranslationName no model currently open.", 0, "Model::GetFieldTranslations"},
    {"ZOL_BlockModel_GetVariableDescription", call<ZOL_BlockModel_GetVariableDescription>, -1, 1,
     "ZOL_BlockModel_GetDescription no model currently open.", 0, "Model::GetFieldDescription"},
    {"ZOL_BlockModel_GetVariableType", call<ZOL_BlockModel_GetVariableType>, -1, -1,
     "ZOL_BlockModel_GetVariableType no model currently open.", 0, "Model::IsPredefined", Order::kEmptiedThenCounted},
    {"ZOL_BlockModel_GetDefaultNumber", call<ZOL_BlockModel_GetDefaultNumber>, -1, 1,
     "ZOL_BlockModel_GetDefaultNumber no model currently open.", 0, "Model::GetFieldDefault"},
    {"ZOL_BlockModel_GetDefaultString", call<ZOL_BlockModel_GetDefaultString>, -1, 1,
     "ZOL_BlockModel_GetDefaultString no model currently open.", 0, "Model::GetFieldDefaultString"},
    {"ZOL_BlockModel_IsNumber", call<ZOL_BlockModel_IsNumber>, -1, -1,
     "ZOL_BlockModel_IsNumber no model currently open.", 0, "Model::IsNumber", Order::kSuccessFirst},
    {"ZOL_BlockModel_IsString", call<ZOL_BlockModel_IsString>, -1, -1,
     "ZOL_BlockModel_IsString no model currently open.", 0, "Model::IsString", Order::kSuccessFirst},
    {"ZOL_BlockModel_FirstBlock", call<ZOL_BlockModel_FirstBlock>, -1, 1,
     "ZOL_BlockModel_FirstBlock no model currently open or blocks matched.", 0, "Model::FindFirst"},
    {"ZOL_BlockModel_NextBlock", call<ZOL_BlockModel_NextBlock>, -1, 1,
     "ZOL_BlockModel_NextBlock no model currently open or blocks matched.", 0, "Model::Next"},
    {"ZOL_BlockModel_IsEof", call<ZOL_BlockModel_IsEof>, -1, -1,
     "ZOL_BlockModel_IsEof no model currently open or blocks matched.", 0, "Model::IsEof", Order::kSuccessFirst},
    {"ZOL_BlockModel_GetPosition", call<ZOL_BlockModel_GetPosition>, -1, -1,
     "ZOL_BlockModel_GetPosition no model currently open or blocks matched.", 0, "Model::GetPosition"},
    {"ZOL_BlockModel_GetNumber", call<ZOL_BlockModel_GetNumber>, -1, 1,
     "ZOL_BlockModel_GetNumber no model currently open or blocks matched.", 0, "Model::Get"},
    {"ZOL_BlockModel_GetString", call<ZOL_BlockModel_GetString>, -1, 1,
     "ZOL_BlockModel_GetString no model currently open or blocks matched.", 0, "Model::GetString"},
    {"ZOL_BlockModel_GetBlockExtent", call<ZOL_BlockModel_GetBlockExtent>, -1, 1,
     "ZOL_BlockModel_GetBlockExtent no model currently open or blocks matched.", 0, "Model::GetBlockExtent"},
    {"ZOL_BlockModel_SetPosition", call<ZOL_BlockModel_SetPosition>, -1, 1,
     "ZOL_BlockModel_SetPosition no model currently open.", 0, "Model::SetPosition"},
    {"ZOL_BlockModel_FindXyz", call<ZOL_BlockModel_FindXyz>, -1, -1,
     "ZOL_BlockModel_FindXyz no model currently open.", 0, "Model::FindXyz", Order::kSuccessFirst},
    {"ZOL_BlockModel_FindWorldXyz", call<ZOL_BlockModel_FindWorldXyz>, -1, -1,
     "ZOL_BlockModel_FindWorldXyz no model currently open.", 0, "Model::FindWorldXyz", Order::kSuccessFirst},
    {"ZOL_BlockModel_AddMatchTriangulation", call<ZOL_BlockModel_AddMatchTriangulation>, -1, 1,
     "ZOL_BlockModel_AddMatchTriangulation no model currently open or blocks matched.", 0, "Model::GetMatch"},
    {"ZOL_BlockModel_SetMatchExtent", call<ZOL_BlockModel_SetMatchExtent>, -1, 1,
     "ZOL_BlockModel_SetMatchExtent no model currently open or blocks matched.", 0, "Model::GetMatch"},
    {"ZOL_BlockModel_SetUseExactVolume", call<ZOL_BlockModel_SetUseExactVolume>, -1, 1,
     "ZOL_BlockModel_SetUseExactVolume no model currently open or blocks matched.", 0, "Model::GetMatch"},
    {"ZOL_BlockModel_ClearMatch", call<ZOL_BlockModel_ClearMatch>, -1, 1,
     "ZOL_BlockModel_ClearMatch no blocks currently matched.", 0, "Match::Close"},
    {"ZOL_BlockModel_GetBlockMatchExtent", call<ZOL_BlockModel_GetBlockMatchExtent>, -1, 1,
     "ZOL_BlockModel_GetBlockMatchExtent no blocks currently matched.", 0, "Match::GetMatchExtent"},
    {"ZOL_BlockModel_GetBlockMatchVolume", call<ZOL_BlockModel_GetBlockMatchVolume>, -1, -1,
     "ZOL_BlockModel_GetBlockMatchVolume no blocks currently matched.", 0, "Match::GetMatchVolume", Order::kSuccessFirst},
};
// clang-format on

}  // namespace

Outputs::Outputs() : code(-77) {
    numbers.fill(-77.0);
    text.fill('#');
}

std::span<const Export> block_model_exports() {
    return kExports;
}

}  // namespace zol::testing
