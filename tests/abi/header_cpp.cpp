// The C++ header alone serves a C++ program, which reaches both linkages through it.
#include "zolExportedApi_ReadOnly.hpp"

int main() {
    ZOL_API_SetErrorMessage("mine");
    const bool shared_slot = ZOL_API_HasError() == 1;
    return ZOL_API_InitBlockApi() == 0 && shared_slot ? 0 : 1;
}
