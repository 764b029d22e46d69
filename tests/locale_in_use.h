// A locale that a host program may have set, for as long as an object of it lives.
#pragma once

#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace zol::testing_support {

/// Makes the locale from the system's descriptions, so that it need not be installed, and
/// sets it; the C locale comes back with the end of the object.
class LocaleInUse {
public:
    /// As localedef takes them: "de_DE", "ISO-8859-1".
    LocaleInUse(const std::string& language, const std::string& letters)
        : folder_(std::filesystem::temp_directory_path() /
                  ("zol_locales." + std::to_string(::getpid()))) {
        std::filesystem::create_directories(folder_);
        const std::string name = language + '.' + letters;
        const std::string make = "localedef -i " + language + " -f " + letters + " '" +
                                 (folder_ / name).string() + "' >/dev/null 2>&1";
        ::setenv("LOCPATH", folder_.c_str(), 1);
        // It ends with 1 for a mere warning too: whether it can be set is what counts.
        static_cast<void>(std::system(make.c_str()));
        is_set_ = std::setlocale(LC_ALL, name.c_str()) != nullptr;
    }
    LocaleInUse(const LocaleInUse&) = delete;
    LocaleInUse& operator=(const LocaleInUse&) = delete;
    ~LocaleInUse() {
        std::setlocale(LC_ALL, "C");
        ::unsetenv("LOCPATH");
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    /// False where the system has no descriptions: Debian's package `locales` brings them.
    bool IsSet() const { return is_set_; }

private:
    std::filesystem::path folder_;
    bool is_set_ = false;
};

}  // namespace zol::testing_support
