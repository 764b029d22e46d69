// The exports that stand outside the guard: they work at any time, are not counted,
// and leave no line in the call log.
#include "api/call_log.h"
#include "api/marshalling.h"
#include "api/state.h"
#include "api/zolExportedApi_ReadOnly.hpp"

using zol::api::state;

int ZOL_API_Init(void) {
    // A pending error stays: only a guarded call that succeeds empties the slot.
    return ZOL_API_InitBlockApi();
}

int ZOL_API_InitBlockApi() {
    state.initialised = 1;
    return 0;
}

void ZOL_API_SetErrorMessage(const std::string& message) {
    state.last_error = message;
}

void ZOL_API_GetError(char* buffer) {
    zol::api::copy_text(state.last_error, buffer);
}

int ZOL_API_HasError(void) {
    return state.last_error.empty() ? 0 : 1;
}

void ZOL_API_StartLogging(const char* file_name) {
    zol::api::start_log(file_name);
}

void ZOL_API_FinishLogging(void) {
    zol::api::finish_log();
}
