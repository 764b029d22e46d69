// The library loaded by a process that has made a locale of its own the global one.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <locale>
#include <string>

#include "tests/api/files.h"

namespace zol::testing {
namespace {

/// Puts a point behind every digit.
struct GroupedDigits : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\1"; }
};

template <class Function>
Function* function_of(void* library, const char* name) {
    return reinterpret_cast<Function*>(dlsym(library, name));
}

TEST(LateLoadTest, TheLocaleOfTheProcessDoesNotReachTheCallLog) {
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new GroupedDigits));
    void* const library = dlopen(ZOL_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const std::string file = fresh_file_name("late_load.log");
    function_of<int()>(library, "ZOL_API_Init")();
    function_of<void(const char*)>(library, "ZOL_API_StartLogging")(file.c_str());
    for (int call = 0; call < 1234; ++call) {
        function_of<int(void*)>(library, "ZOL_BlockModel_IsOpen")(nullptr);
    }
    function_of<void()>(library, "ZOL_API_FinishLogging")();
    std::locale::global(before);
    EXPECT_NE(text_of_file(file).find("\nZOL_BlockModel_IsOpen_calls: 1234\n"), std::string::npos);
    std::remove(file.c_str());
    dlclose(library);
}

}  // namespace
}  // namespace zol::testing
