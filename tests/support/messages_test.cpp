// What a process does once: reading the language, loading dictionaries, finding their
// folder, saving what had no translation. Every case runs in a process of its own.
#include "support/messages.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/c_variant.h"
#include "support/strtab.h"
#include "support/variant.h"
#include "tests/doubles/scripted_preferences.h"
#include "tests/support/child_process.h"

namespace zol::testing {
namespace {

namespace fs = std::filesystem;

std::string content_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Messages : public ::testing::Test {
protected:
    Messages() {
        folder_ = fs::path(::testing::TempDir()) /
                  ("zol_messages_" + std::to_string(::getpid()) + "_" +
                   ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::create_directories(folder_ / "bin/flib");
    }
    ~Messages() override { fs::remove_all(folder_); }

    /// A dictionary in the folder "bin/flib".
    void Write(const std::string& language, const std::string& content) {
        std::ofstream(folder_ / "bin/flib" / (language + "_dictionary"), std::ios::binary)
            << content;
    }

    /// Runs `work` in a process whose dictionaries are those written, and whose current
    /// directory is the folder.
    std::string Run(const std::function<std::string()>& work) {
        return in_child([&] {
            ::setenv("OSTREL_FLIB", (folder_ / "bin/flib").c_str(), 1);
            // Whoever runs the tests may have it set.
            ::unsetenv("SAVE_UNTRANSLATED");
            fs::current_path(folder_);
            return work();
        });
    }

    fs::path folder_;
};

CVariant record(MVariantKind kind, std::uint64_t payload) {
    CVariant made{};
    made.kind = kind;
    made.payload = payload;
    return made;
}

CVariant text_record(const char* text) {
    return record(MV_STRING, std::bit_cast<std::uint64_t>(text));
}

/// Never released: the process that makes it has one.
CVariant map_record(const char* key, const CVariant& value) {
    strtab_t* const table = strtab_New();
    strtab_SetCallbacks(
        table,
        [](const void* each) -> void* { return new CVariant(*static_cast<const CVariant*>(each)); },
        [](void* each) { delete static_cast<CVariant*>(each); });
    strtab_Set(table, key, &value);
    return record(MV_MAP, std::bit_cast<std::uint64_t>(table));
}

CVariant vector_record(const CVariant& element) {
    array_t* const array = array_New(sizeof(CVariant));
    array_AddCopy(array, &element);
    return record(MV_VECTOR, std::bit_cast<std::uint64_t>(array));
}

TEST_F(Messages, SpeakTheLanguageOfThePreferences) {
    Write("German", "Ore\nErz\n");
    Write("7", "Ore\nseven\n");
    Write("English", "Ore\nnever looked up\n");
    const struct {
        const char* name;
        std::function<CVariant()> preferences;
        const char* expected;
    } rows[] = {
        {"a text", [] { return map_record("language", text_record("German")); }, "Erz"},
        {"another key", [] { return map_record("Language", text_record("German")); }, "Ore"},
        {"the empty text", [] { return map_record("language", text_record("")); }, "Ore"},
        {"English", [] { return map_record("language", text_record("English")); }, "Ore"},
        {"a language without a dictionary",
         [] { return map_record("language", text_record("Welsh")); }, "Ore"},
        {"a number", [] { return map_record("language", record(MV_INT, 7)); }, "seven"},
        {"an empty value", [] { return map_record("language", record(MV_EMPTY, 0)); }, "Ore"},
        {"a vector of one text",
         [] { return map_record("language", vector_record(text_record("German"))); }, "Erz"},
        {"a vector for the map", [] { return vector_record(text_record("German")); }, "Ore"},
        {"a text for the map", [] { return text_record("German"); }, "Ore"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string said = Run([&] {
            CVariant preferences = row.preferences();
            doubles::preferences = &preferences;
            return msg_Translate("Ore");
        });
        EXPECT_EQ(said, row.expected);
    }
    EXPECT_EQ(Run([] { return msg_Translate("Ore##x"); }), "Ore") << "no preferences at all";
}

TEST_F(Messages, ReadTheLanguageAndEachDictionaryOnce) {
    Write("German", "Ore\nErz\n");
    Write("Spanish", "Ore\nMineral\n");
    EXPECT_EQ(Run([&] {
                  CVariant german = map_record("language", text_record("German"));
                  CVariant spanish = map_record("language", text_record("Spanish"));
                  doubles::preferences = &german;
                  std::string said = msg_Translate("Ore") + ' ';
                  doubles::preferences = &spanish;
                  Write("German", "Ore\nanother\n");
                  ::setenv("OSTREL_FLIB", "/nowhere", 1);
                  said += msg_TranslateTo("Spanish", "Ore") + ' ' + msg_Translate("Ore") + ' ';
                  ::setenv("OSTREL_FLIB", (folder_ / "bin/flib").c_str(), 1);
                  said += msg_TranslateTo("Spanish", "Ore");
                  return said + ' ' + std::to_string(doubles::preference_readings);
              }),
              "Erz Ore Erz Ore 1");
}

TEST_F(Messages, TranslateEachPieceAndKeepWhatStandsAround) {
    Write("German", "First\nErstes\nSecond one\nZweites\n");
    const auto translated = [](const std::string& text) {
        return [text] { return msg_TranslateTo("German", text); };
    };
    EXPECT_EQ(Run(translated("First\tSecond one")), "Erstes\tZweites");
    EXPECT_EQ(Run(translated(" First \r\n  Third##x \n")), " Erstes \r\n  Third \n");
    EXPECT_EQ(Run(translated("First Second one")), "First Second one");
    EXPECT_EQ(Run([] { return msg_TranslateTo("", "First##a\tSecond one"); }), "First")
        << "without a dictionary the context ends the whole text";
    EXPECT_EQ(Run(translated("")), "");
}

TEST_F(Messages, FindTheFolderOfDictionaries) {
    Write("German", "Ore\nErz\n");
    const std::string long_root = folder_.string() + std::string(300, '/');
    const struct {
        const char* name;
        const char* root;
        const char* flib;
        std::string expected;
    } rows[] = {
        {"the variable", nullptr, "bin/flib", "Erz bin/flib"},
        {"set from the root", folder_.c_str(), nullptr, "Erz " + folder_.string() + "/bin/flib"},
        {"a root of many bytes", long_root.c_str(), nullptr, "Erz " + long_root + "/bin/flib"},
        {"set already", folder_.c_str(), "/nowhere", "Ore /nowhere"},
        {"neither", nullptr, nullptr, "Ore unset"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Run([&] {
                      const auto set = [](const char* name, const char* value) {
                          value == nullptr ? ::unsetenv(name) : ::setenv(name, value, 1);
                      };
                      set("OSTREL", row.root);
                      set("OSTREL_FLIB", row.flib);
                      const std::string said = msg_TranslateTo("German", "Ore");
                      const char* flib = std::getenv("OSTREL_FLIB");
                      return said + ' ' + (flib == nullptr ? "unset" : flib);
                  }),
                  row.expected);
    }
}

TEST_F(Messages, AreThemselvesWithoutAUsableDictionary) {
    fs::create_directory(folder_ / "bin/flib/Folder_dictionary");
    Write("Huge", "Ore\nErz\n");
    fs::resize_file(folder_ / "bin/flib/Huge_dictionary", (std::uintmax_t{64} << 20) + 1);
    Write("Lines", "Ore\nErz\n" + std::string((1 << 22) + 1, '\n'));
    for (const char* language : {"Folder", "Huge", "Lines", "Absent", "../flib/Absent"}) {
        SCOPED_TRACE(language);
        const std::string said = Run([&] {
            ::testing::internal::CaptureStderr();
            const std::string text = msg_TranslateTo(language, "Ore##rock");
            return text + '|' + ::testing::internal::GetCapturedStderr();
        });
        const bool is_refused = std::string(language) == "Huge" || std::string(language) == "Lines";
        EXPECT_EQ(said.substr(0, 4), "Ore|");
        EXPECT_EQ(said.find("dict_Load: ") == 4, is_refused) << said;
    }
}

TEST_F(Messages, SaveWhatHadNoTranslation) {
    Write("German", "Ore\nErz\n");
    const auto speak = [] {
        for (int i = 0; i < 2; ++i) msg_TranslateTo("German", " 5 [m]^2.#x\\ \tOre\t \t");
        msg_TranslateTo("German", "");
        return std::string();
    };
    Run([&] {
        ::setenv("SAVE_UNTRANSLATED", "", 1);
        return speak();
    });
    const std::string line = "5 \\[m\\]\\^2\\.#x\\\\\n";
    EXPECT_EQ(content_of(folder_ / "untranslated"), line + line);
    Run([&] {
        speak();
        ::setenv("SAVE_UNTRANSLATED", "1", 1);
        return speak();
    });
    EXPECT_EQ(content_of(folder_ / "untranslated"), line + line) << "the variable came too late";
    Run([&] {
        ::setenv("SAVE_UNTRANSLATED", "1", 1);
        return speak();
    });
    EXPECT_EQ(content_of(folder_ / "untranslated"), line + line + line + line) << "appended";
}

TEST_F(Messages, SurviveAFileThatCannotBeSaved) {
    fs::create_directory(folder_ / "untranslated");
    EXPECT_EQ(Run([] {
                  ::setenv("SAVE_UNTRANSLATED", "1", 1);
                  return msg_TranslateTo("German", "Ore##rock");
              }),
              "Ore");
}

}  // namespace
}  // namespace zol::testing
