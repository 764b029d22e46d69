#include "support/err_print.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

void err_Print(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    std::array<char, 512> usual;
    const int length = std::vsnprintf(usual.data(), usual.size(), format, arguments);
    va_end(arguments);
    const std::size_t size = length > 0 ? static_cast<std::size_t>(length) : 0;
    const bool is_long = size >= usual.size();
    char* const text = is_long ? static_cast<char*>(std::malloc(size + 1)) : usual.data();
    if (text != nullptr) {
        if (is_long) {
            std::vsnprintf(text, size + 1, format, again);
        }
        text[size] = '\n';
        // In one call, over which the stream holds its lock.
        std::fwrite(text, 1, size + 1, stderr);
    } else {
        // Without the memory to hold it together the line may mix with another's.
        std::vfprintf(stderr, format, again);
        std::fputc('\n', stderr);
    }
    if (is_long) {
        std::free(text);
    }
    va_end(again);
}
