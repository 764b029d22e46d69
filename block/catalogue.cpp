// The variables of a block model: lists of names by class, and what a name stands for.
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "api/guard.h"
#include "api/index.h"
#include "api/marshalling.h"
#include "api/zolExportedApi_ReadOnly.h"
#include "block/handle.h"
#include "platform/zolBlockExport.h"

using zol::api::Call;
using zol::api::copy_text;
using zol::api::copy_text_open;
using zol::api::FunctionId;
using zol::api::guarded;
using zol::api::guarded_late;
using zol::api::is_index;
using zol::api::kCount;
using zol::api::kPredicate;
using zol::api::kStatus;
using zol::api::Outcome;
using zol::block::kInvalidIndex;
using zol::block::open_model;
using zol::model::block::Model;

namespace {

/// The lists that a model is asked for; bits as Model::GetFieldVector tells them.
enum Selector : int {
    kVariables = 1,
    kPredefined = 2,
    kClassification = 4,
    kNumeric = 9,
    kString = 17,
};

int length(const std::vector<std::string>& list) {
    return static_cast<int>(list.size());
}

int count_variables(FunctionId function, BlockModelHandle* handle, Selector selector) {
    return guarded(function, kCount, open_model, handle,
                   [&](const Model& model) { return length(model.GetFieldVector(selector)); });
}

/// Copies one name of the list that `list_of` gets from the model.
template <class ListOf>
int copy_name(FunctionId function, BlockModelHandle* handle, const int* index, char* buffer,
              ListOf list_of) {
    return guarded(function, kStatus, open_model, handle,
                   [&](Call& call, const Model& model) -> Outcome<int> {
                       const std::vector<std::string> names = list_of(model);
                       if (!is_index(*index, length(names))) {
                           return call.Fail(kInvalidIndex);
                       }
                       copy_text(names[static_cast<std::size_t>(*index)], buffer);
                       return 0;
                   });
}

int copy_variable_name(FunctionId function, BlockModelHandle* handle, Selector selector,
                       const int* index, char* buffer) {
    return copy_name(function, handle, index, buffer,
                     [&](const Model& model) { return model.GetFieldVector(selector); });
}

struct TypeCode {
    std::string_view name;
    int code;
};

constexpr std::array<TypeCode, 8> kTypeCodes{{
    {"bit", 1},
    {"byte", 2},
    {"short", 3},
    {"sfloat", 4},
    {"integer", 5},
    {"int64", 6},
    {"float", 7},
    {"double", 8},
}};
constexpr int kUnknownType = 0;
constexpr int kDoubleType = 8;
constexpr int kStringType = 9;

int type_code(const Model& model, const std::string& variable) {
    // A predefined variable is a double, whatever type the model stores it in.
    if (model.IsPredefined(variable)) {
        return kDoubleType;
    }
    if (model.IsString(variable)) {
        return kStringType;
    }
    const std::string type = model.GetFieldType(variable);
    for (const TypeCode& known : kTypeCodes) {
        if (known.name == type) {
            return known.code;
        }
    }
    return kUnknownType;
}

}  // namespace

int ZOL_BlockModel_NVariables(BlockModelHandle* handle) {
    return count_variables(__func__, handle, kVariables);
}

int ZOL_BlockModel_NPredefinedVariables(BlockModelHandle* handle) {
    return count_variables(__func__, handle, kPredefined);
}

int ZOL_BlockModel_NClassificationVariables(BlockModelHandle* handle) {
    return count_variables(__func__, handle, kClassification);
}

int ZOL_BlockModel_NNumericVariables(BlockModelHandle* handle) {
    return count_variables(__func__, handle, kNumeric);
}

int ZOL_BlockModel_NStringVariables(BlockModelHandle* handle) {
    return count_variables(__func__, handle, kString);
}

int ZOL_BlockModel_GetVariableName(BlockModelHandle* handle, const int* index, char* buffer) {
    return copy_variable_name(__func__, handle, kVariables, index, buffer);
}

int ZOL_BlockModel_GetPredefinedVariableName(BlockModelHandle* handle, const int* index,
                                             char* buffer) {
    return copy_variable_name(__func__, handle, kPredefined, index, buffer);
}

int ZOL_BlockModel_GetClassificationVariableName(BlockModelHandle* handle, const int* index,
                                                 char* buffer) {
    return copy_variable_name(__func__, handle, kClassification, index, buffer);
}

int ZOL_BlockModel_GetNumericVariableName(BlockModelHandle* handle, const int* index,
                                          char* buffer) {
    return copy_variable_name(__func__, handle, kNumeric, index, buffer);
}

int ZOL_BlockModel_GetStringVariableName(BlockModelHandle* handle, const int* index, char* buffer) {
    return copy_variable_name(__func__, handle, kString, index, buffer);
}

int ZOL_BlockModel_NTranslations(BlockModelHandle* handle, const char* variable) {
    return guarded_late(__func__, kCount, open_model, handle, [&](const Model& model) {
        return length(model.GetFieldTranslations(variable));
    });
}

int ZOL_BlockModel_GetTranslationName(BlockModelHandle* handle, const char* variable,
                                      const int* index, char* buffer) {
    return copy_name(__func__, handle, index, buffer,
                     [&](const Model& model) { return model.GetFieldTranslations(variable); });
}

int ZOL_BlockModel_GetVariableDescription(BlockModelHandle* handle, const char* variable,
                                          char* buffer) {
    // Its message names a function that does not exist: that is meant.
    return guarded(
        __func__, kStatus.SpeaksAs("ZOL_BlockModel_GetDescription"), open_model, handle,
        [&](const Model& model) { copy_text(model.GetFieldDescription(variable), buffer); });
}

int ZOL_BlockModel_GetVariableType(BlockModelHandle* handle, const char* variable, int* type) {
    // A status function that fails like a predicate, with an order of its own: the error
    // is emptied ahead of the model's answers, the call is counted behind them.
    return guarded(__func__, kStatus.Failing(-1), open_model, handle,
                   [&](Call& call, const Model& model) {
                       call.EmptyError();
                       *type = type_code(model, variable);
                   });
}

int ZOL_BlockModel_GetDefaultNumber(BlockModelHandle* handle, const char* variable,
                                    double* number) {
    return guarded(__func__, kStatus, open_model, handle,
                   [&](const Model& model) { *number = model.GetFieldDefault(variable); });
}

int ZOL_BlockModel_GetDefaultString(BlockModelHandle* handle, const char* variable, char* buffer) {
    return guarded(__func__, kStatus, open_model, handle, [&](const Model& model) {
        copy_text_open(model.GetFieldDefaultString(variable), buffer);
    });
}

int ZOL_BlockModel_IsNumber(BlockModelHandle* handle, const char* variable) {
    return guarded_late(__func__, kPredicate, open_model, handle,
                        [&](const Model& model) { return model.IsNumber(variable); });
}

int ZOL_BlockModel_IsString(BlockModelHandle* handle, const char* variable) {
    return guarded_late(__func__, kPredicate, open_model, handle,
                        [&](const Model& model) { return model.IsString(variable); });
}
