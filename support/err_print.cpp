#include "support/err_print.h"

#include <cstdarg>
#include <cstdio>

void err_Print(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    // The stream's own lock, held over both writes.
    ::flockfile(stderr);
    std::vfprintf(stderr, format, arguments);
    std::fputc('\n', stderr);
    ::funlockfile(stderr);
    va_end(arguments);
}
