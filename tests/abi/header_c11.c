/* The public header is C: this program takes the address of every function that it
 * declares, so that each is there with C linkage. */
#include "zolExportedApi_ReadOnly.h"

typedef void (*any_function)(void);

/* clang-format off */
static const any_function functions[] = {
    (any_function)ZOL_API_Init,
    (any_function)ZOL_API_GetError,
    (any_function)ZOL_API_HasError,
    (any_function)ZOL_API_StartLogging,
    (any_function)ZOL_API_FinishLogging,
    (any_function)ZOL_BlockModel_Open,
    (any_function)ZOL_BlockModel_Close,
    (any_function)ZOL_BlockModel_IsOpen,
    (any_function)ZOL_BlockModel_GetModelExtent,
    (any_function)ZOL_BlockModel_GetModelOrigin,
    (any_function)ZOL_BlockModel_GetModelOrientation,
    (any_function)ZOL_BlockModel_ModelToWorld,
    (any_function)ZOL_BlockModel_WorldToModel,
    (any_function)ZOL_BlockModel_IsStratigraphicModel,
    (any_function)ZOL_BlockModel_NBlocks,
    (any_function)ZOL_BlockModel_NSchemas,
    (any_function)ZOL_BlockModel_GetSchemaExtent,
    (any_function)ZOL_BlockModel_GetSchemaDimensions,
    (any_function)ZOL_BlockModel_GetSchemaSizes,
    (any_function)ZOL_BlockModel_NVariables,
    (any_function)ZOL_BlockModel_GetVariableName,
    (any_function)ZOL_BlockModel_NPredefinedVariables,
    (any_function)ZOL_BlockModel_GetPredefinedVariableName,
    (any_function)ZOL_BlockModel_NClassificationVariables,
    (any_function)ZOL_BlockModel_GetClassificationVariableName,
    (any_function)ZOL_BlockModel_NNumericVariables,
    (any_function)ZOL_BlockModel_GetNumericVariableName,
    (any_function)ZOL_BlockModel_NStringVariables,
    (any_function)ZOL_BlockModel_GetStringVariableName,
    (any_function)ZOL_BlockModel_NTranslations,
    (any_function)ZOL_BlockModel_GetTranslationName,
    (any_function)ZOL_BlockModel_GetVariableDescription,
    (any_function)ZOL_BlockModel_GetVariableType,
    (any_function)ZOL_BlockModel_GetDefaultNumber,
    (any_function)ZOL_BlockModel_GetDefaultString,
    (any_function)ZOL_BlockModel_IsNumber,
    (any_function)ZOL_BlockModel_IsString,
    (any_function)ZOL_BlockModel_FirstBlock,
    (any_function)ZOL_BlockModel_NextBlock,
    (any_function)ZOL_BlockModel_IsEof,
    (any_function)ZOL_BlockModel_GetPosition,
    (any_function)ZOL_BlockModel_GetNumber,
    (any_function)ZOL_BlockModel_GetString,
    (any_function)ZOL_BlockModel_GetBlockExtent,
    (any_function)ZOL_BlockModel_SetPosition,
    (any_function)ZOL_BlockModel_FindXyz,
    (any_function)ZOL_BlockModel_FindWorldXyz,
};
/* clang-format on */

int main(void) {
    for (unsigned long at = 0; at < sizeof functions / sizeof functions[0]; ++at) {
        if (!functions[at]) {
            return 1;
        }
    }
    return ZOL_API_Init();
}
