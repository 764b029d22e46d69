// Where the preferences come from, and what they are when nothing does. They are read
// once, so that each case has a process of its own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/ZelmarDevAExport.h"
#include "support/c_variant.h"
#include "support/variant.h"
#include "tests/support/child_process.h"

namespace zol::engine {
namespace {

namespace fs = std::filesystem;

class Preferences : public ::testing::Test {
protected:
    Preferences() {
        folder_ =
            fs::path(::testing::TempDir()) / ("zol_preferences_" + std::to_string(::getpid()));
        fs::create_directories(folder_ / "config/zol");
        fs::create_directories(folder_ / "home/.config/zol");
    }
    ~Preferences() override { fs::remove_all(folder_); }

    void Write(const char* name, const std::string& content) {
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }

    /// The preferences as text, and behind a bar what the diagnostics channel was told.
    std::string Read(const std::string& config, const std::string& home) {
        const fs::path told = folder_ / "told";
        fs::remove(told);
        const std::string text = testing::in_child([&] {
            const auto set = [](const char* name, const std::string& value) {
                value == "unset" ? ::unsetenv(name) : ::setenv(name, value.c_str(), 1);
            };
            set("XDG_CONFIG_HOME", config);
            set("HOME", home);
            ::setenv("ZOL_DIAGNOSTICS", told.c_str(), 1);
            const MVariant preferences(pref_CGetPreferences());
            return std::string(preferences.Kind() == MV_MAP ? "map " : "no map ") +
                   preferences.AsString();
        });
        std::ifstream file(told, std::ios::binary);
        return text + '|' + std::string(std::istreambuf_iterator<char>(file), {});
    }

    std::string Config() const { return (folder_ / "config").string(); }
    std::string Home() const { return (folder_ / "home").string(); }

    fs::path folder_;
};

TEST_F(Preferences, ComeFromTheFolderOfSettings) {
    Write("config/zol/preferences", "{ \"language\" = \"German\" }\n");
    Write("home/.config/zol/preferences", "{ \"language\" = \"Spanish\", }\n");
    EXPECT_EQ(Read(Config(), Home()), "map language->German|");
    EXPECT_EQ(Read("unset", Home()), "map language->Spanish|");
    EXPECT_EQ(Read("", Home()), "map language->Spanish|");
    EXPECT_EQ(Read("config", Home()), "map language->Spanish|") << "no full path";
    EXPECT_EQ(Read(Config(), "unset"), "map language->German|");
    EXPECT_EQ(Read("/nowhere", Home()), "map |") << "a folder that is set is the only one";
    EXPECT_EQ(Read("unset", "unset"), "map |");
    EXPECT_EQ(Read("unset", ""), "map |");
}

TEST_F(Preferences, AreAnEmptyMapForAFileThatHoldsNone) {
    const std::string name = Config() + "/zol/preferences";
    const struct {
        const char* content;
        std::string told;
    } rows[] = {
        {"{\n \"language\" = \"German\"\n \"units\" = 1\n}\n",
         "line 3: Error parsing variant map/hash: missing expected item separator ','"},
        {"", "line 1: Unexpected End Of File"},
        {"{ \"language\" = \"Ger", "line 1: Error parsing variant map/hash"},
        {"\x7f"
         "ELF\x01\x02",
         "line 1: Error parsing variant"},
        {"[ \"German\" ]\n", "the preferences are no map"},
        {"\"German\"\n", "the preferences are no map"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.content);
        Write("config/zol/preferences", row.content);
        const std::string read = Read(Config(), Home());
        EXPECT_EQ(read.find("map |zol: " + name + ": "), 0U) << read;
        EXPECT_NE(read.find(row.told), std::string::npos) << read;
        EXPECT_EQ(read.find('\n'), read.size() - 1) << "one line";
    }
    Write("config/zol/preferences", std::string(200000, '['));
    EXPECT_EQ(Read(Config(), Home()).find("map |zol: "), 0U);
    fs::remove(name);
    fs::create_directory(name);
    EXPECT_EQ(Read(Config(), Home()), "map |zol: " + name + ": the preferences can't be read\n");
}

TEST_F(Preferences, AreReadOnceAndKept) {
    // In this process, so that its leaks show when it ends.
    Write("config/zol/preferences", "{ \"language\" = \"German\", \"recent\" = [ \"a\", { } ] }\n");
    ::setenv("XDG_CONFIG_HOME", Config().c_str(), 1);
    CVariant* const first = pref_CGetPreferences();
    Write("config/zol/preferences", "{ }\n");
    EXPECT_EQ(pref_CGetPreferences(), first);
    EXPECT_EQ(MVariant(cvariant_Get(first, "language")).AsString(), "German");
    EXPECT_EQ(cvariant_Count(cvariant_Get(first, "recent")), 2);
}

}  // namespace
}  // namespace zol::engine
