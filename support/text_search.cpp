#include "support/text_search.h"

#include <string_view>

const char* str_LastOccurrence(const char* text, const char* needle) {
    if (text == nullptr || needle == nullptr) {
        return nullptr;
    }
    const std::size_t place = std::string_view(text).rfind(needle);
    return place == std::string_view::npos ? nullptr : text + place;
}
