// Runs a check in every kind of locale that a host program may have set.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string>

/// Calls `check` in the C locale, in UTF-8, and in an 8-bit and a multi-byte locale of
/// their own letters and messages, as far as these can be made here.
template <typename Check>
void in_every_locale(Check check) {
    {
        SCOPED_TRACE("locale C");
        check();
    }
    const char* const utf8 = std::setlocale(LC_ALL, "C.UTF-8");
    EXPECT_NE(utf8, nullptr);
    {
        SCOPED_TRACE("locale C.UTF-8");
        check();
    }
    const std::filesystem::path folder =
        std::filesystem::path(::testing::TempDir()) / ("locales." + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    ::setenv("LOCPATH", folder.c_str(), 1);
    const char* const made[][3] = {{"de_DE", "ISO-8859-1", "de_DE.ISO-8859-1"},
                                   {"ja_JP", "EUC-JP", "ja_JP.EUC-JP"}};
    for (const auto& [language, letters, name] : made) {
        const std::string make = std::string("localedef -i ") + language + " -f " + letters + " '" +
                                 (folder / name).string() + "' 2>/dev/null";
        if (std::system(make.c_str()) == 0 && std::setlocale(LC_ALL, name) != nullptr) {
            SCOPED_TRACE(std::string("locale ") + name);
            check();
        }
    }
    std::setlocale(LC_ALL, "C");
    ::unsetenv("LOCPATH");
    std::filesystem::remove_all(folder);
}
