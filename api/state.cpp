#include "api/state.h"

namespace zol::api {

State state;

}  // namespace zol::api
