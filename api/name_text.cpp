#include "api/name_text.h"

namespace zol::api {

namespace {

// A longer name is kept by nobody: what the library holds stays within some kilobytes.
constexpr std::size_t kLongestKept = 255;

}  // namespace

std::array<NameText::Kept, NameText::kPlaces> NameText::kept;

void NameText::Take(const char* text) {
    const std::size_t length = std::strlen(text);
    if (kept_.in_use || length > kLongestKept) {
        own_.emplace(text, length);
        return;
    }
    kept_.name.assign(text, length);
    kept_.in_use = true;
}

}  // namespace zol::api
