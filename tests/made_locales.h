// Locales for a test, made in a folder of its own: few machines have any but C. Making one
// takes localedef, of the package locales.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cctype>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace zol::testing_support {

/// The locales that this object has made can be set as long as it lives; at its end the
/// process is back in C.
class MadeLocales {
public:
    MadeLocales() {
        std::filesystem::create_directories(folder_);
        ::setenv("LOCPATH", folder_.c_str(), 1);
    }
    ~MadeLocales() {
        std::setlocale(LC_ALL, "C");
        ::unsetenv("LOCPATH");
        std::filesystem::remove_all(folder_);
    }
    MadeLocales(const MadeLocales&) = delete;
    MadeLocales& operator=(const MadeLocales&) = delete;

    /// Makes and sets the locale of a language in a character set. A machine that can't is
    /// a failure of the test, which would otherwise pass without having looked.
    bool Set(const std::string& language, const std::string& letters) {
        return Make(language, language, letters, LC_ALL);
    }
    /// Makes and sets what a locale says of letters: one byte each, 0x85 and 0xA0 blanks.
    bool SetWithMoreBlanks() {
        const std::filesystem::path source = folder_ / "source";
        std::ofstream(source) << "comment_char %\nescape_char /\n"
                                 "LC_CTYPE\n"
                                 "upper <U0041>..<U005A>\n"
                                 "lower <U0061>..<U007A>\n"
                                 "space <U0009>..<U000D>;<U0020>;<U0085>;<U00A0>\n"
                                 "END LC_CTYPE\n";
        const bool is_set = Make(source.string(), "blanks", "ISO-8859-1", LC_CTYPE);
        EXPECT_TRUE(std::isspace(0x85) != 0 && std::isspace(0xA0) != 0);
        return is_set;
    }

private:
    bool Make(const std::string& source, const std::string& language, const std::string& letters,
              int category) {
        const std::string name = language + '.' + letters;
        // The rest of a locale may be missing, which counts as an error of sorts.
        const std::string make = "localedef -c -i '" + source + "' -f " + letters + " '" +
                                 (folder_ / name).string() + "' >/dev/null 2>&1";
        const int outcome = std::system(make.c_str());
        const bool is_set = std::setlocale(category, name.c_str()) != nullptr;
        EXPECT_TRUE(is_set) << "no locale " << name << ": localedef ended with " << outcome
                            << "; is the package locales installed?";
        return is_set;
    }

    std::filesystem::path folder_ =
        std::filesystem::path(::testing::TempDir()) / ("locales." + std::to_string(::getpid()));
};

}  // namespace zol::testing_support
