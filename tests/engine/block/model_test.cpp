// The model behind its contract: catalogue, cursor, searches, and files that no
// reader can take.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cfenv>
#include <clocale>
#include <cmath>
#include <fstream>
#include <string>

#include "platform/zolBlockExport.h"
#include "tests/engine/temporary_file.h"

namespace {

using zol::model::block::Match;
using zol::model::block::Model;
using zol::testing_support::TemporaryFile;

const std::string kSamples = ZOL_SAMPLES;

// The last line on the diagnostics channel while `work` runs.
template <class Work>
std::string reason_of(Work work) {
    const TemporaryFile channel("");
    ::setenv("ZOL_DIAGNOSTICS", channel.Path().c_str(), 1);
    work();
    ::unsetenv("ZOL_DIAGNOSTICS");
    std::ifstream in(channel.Path());
    std::string line;
    std::string last;
    while (std::getline(in, line)) {
        last = line;
    }
    return last;
}

TEST(Model, ListsVariablesByClass) {
    const Model model(kSamples + "/blocks/made_subblocked.csv", "r");
    ASSERT_TRUE(model.IsOpen());
    using Names = std::vector<std::string>;
    EXPECT_EQ(model.GetName(), "made_subblocked");
    EXPECT_EQ(model.GetFieldVector(1), (Names{"au_ppm", "domain", "n_src"}));
    EXPECT_EQ(model.GetFieldVector(4), (Names{"domain"}));
    EXPECT_EQ(model.GetFieldVector(9), (Names{"au_ppm", "domain", "n_src"}));
    EXPECT_EQ(model.GetFieldVector(17), Names{});
    EXPECT_EQ(model.GetFieldVector(2).size(), 8U);
    EXPECT_EQ(model.GetFieldType("n_src"), "short");
    EXPECT_EQ(model.GetFieldTranslations("domain").at(2), "TRANS \"mix\"");
    EXPECT_EQ(model.GetFieldDefault("domain"), 0.0);
    EXPECT_EQ(model.GetFieldDefaultString("domain"), "WASTE");
    EXPECT_TRUE(model.IsPredefined("volume") && model.IsNumber("volume"));
    // A name that the model doesn't have.
    EXPECT_FALSE(model.IsNumber("cu") || model.IsString("cu") || model.IsPredefined("cu"));
    EXPECT_TRUE(std::isnan(model.Get("cu")) && std::isnan(model.GetFieldDefault("cu")));
    EXPECT_EQ(model.GetString("cu") + model.GetFieldType("cu") + model.GetFieldDescription("cu"),
              "");
}

TEST(Model, WalksAndStopsAtTheEnd) {
    Model model(kSamples + "/blocks/made_subblocked.csv", "r");
    EXPECT_EQ(model.FindFirst(), 0);
    int missing = 0;
    double volume = 0;
    for (; !model.IsEof(); model.Next()) {
        missing += model.Get("au_ppm") == -99.0 ? 1 : 0;
        volume += model.Get("volume");
    }
    EXPECT_EQ(missing, 2);
    EXPECT_EQ(volume, 50000.0);
    EXPECT_EQ(model.Next(), 1);
    EXPECT_EQ(model.GetPosition().value, 121);
    EXPECT_TRUE(std::isnan(model.Get("au_ppm")) && std::isnan(model.Get("volume")));
    EXPECT_EQ(model.GetString("domain"), "");
    EXPECT_EQ(model.GetBlockExtent().GetExtent().x1, 0.0);
    EXPECT_EQ(model.SetPosition({120}), 0);
    EXPECT_EQ(model.GetString("domain"), "TRANS \"mix\"");
    EXPECT_EQ(model.SetPosition({-5}), 1);
    EXPECT_TRUE(model.IsEof());
}

TEST(Model, SearchesLeaveTheCursorWhenNothingIsThere) {
    Model model(kSamples + "/blocks/estimate_regular.csv", "r");
    ASSERT_TRUE(model.IsOpen());
    EXPECT_EQ(model.FindWorldXyz(2.5, 2.5, 27.5), 0);
    EXPECT_EQ(model.Get("IJK"), 7200.0);
    EXPECT_EQ(model.FindXyz(2.5, 2.5, 2.5), 0);
    EXPECT_EQ(model.Get("IJK"), 7200.0);
    ASSERT_EQ(model.SetPosition({17}), 0);
    for (const double outside :
         {-1e-9, 1e300, std::nan(""), -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(model.FindXyz(outside, 2.5, 2.5), 1);
        EXPECT_EQ(model.GetPosition().value, 17);
    }
}

TEST(Model, KeepsAMatchThatIsEveryBlockUntilItIsNarrowed) {
    Model model(kSamples + "/blocks/made_subblocked.csv", "r");
    model.SetPosition({7});
    Match& match = model.GetMatch();
    EXPECT_EQ(match.FindFirst(), 0);
    int blocks = 0;
    for (; !match.IsEof(); match.Next()) {
        ++blocks;
    }
    EXPECT_EQ(blocks, 121);
    EXPECT_EQ(model.GetPosition().value, 7) << "each has a cursor of its own";
    match.Close();
    match.Close();
    EXPECT_EQ(&model.GetMatch(), &match);
}

TEST(Model, AnswersAlikeInAnyRoundingModeAndLocale) {
    const auto sum = [] {
        Model model(kSamples + "/blocks/made_subblocked_semicolon_decimal_comma.csv", "r");
        double total = 0;
        std::string texts;
        for (model.FindFirst(); !model.IsEof(); model.Next()) {
            total = std::fma(1.0, model.Get("centroid_z") - 27.5, total);
            texts += model.GetString("au_ppm") + " ";
        }
        return texts + std::to_string(total == total ? 1 : 0);
    };
    const std::string usual = sum();
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        const std::string turned = sum();
        EXPECT_EQ(std::fegetround(), mode) << "the mode is the caller's";
        std::fesetround(FE_TONEAREST);
        EXPECT_EQ(turned, usual);
    }
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_ALL, locale) != nullptr) {
            EXPECT_EQ(sum(), usual);
        }
    }
    std::setlocale(LC_ALL, "C");
}

TEST(Model, SaysWhyAFileDoesNotOpen) {
    const TemporaryFile empty("");
    const TemporaryFile zip("PK\x03\x04 and so on");
    const TemporaryFile binary(
        std::string("\x7f"
                    "ELF\0\0",
                    6));
    const std::string pipe = empty.Path() + ".pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    struct Case {
        std::string file;
        const char* mode;
        const char* reason;
    };
    const Case cases[] = {
        {kSamples + "/no such file", "r", "can't open the file: No such file or directory"},
        {kSamples, "r", "it is a folder, not a file"},
        {"/dev/null", "r", "it is not a regular file"},
        {pipe, "r", "it is not a regular file"},
        {"", "r", "can't open the file: No such file or directory"},
        {empty.Path(), "r", "the file is empty"},
        {zip.Path(), "r", "it is a zip archive; of OMF files only those of version 1 are read"},
        {binary.Path(), "r", "a NUL byte stands at byte 4"},
        {kSamples + "/blocks/made_subblocked.csv#other", "r", "and none named 'other'"},
        {kSamples + "/blocks/made_subblocked.csv", "w", "only opened for reading"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const std::string said = reason_of([&] {
            const Model model(c.file, c.mode);
            EXPECT_FALSE(model.IsOpen());
            EXPECT_EQ(model.NBlocks(), 0);
        });
        EXPECT_NE(said.find(c.reason), said.npos) << said;
    }
    ::unlink(pipe.c_str());
    const Model named(kSamples + "/blocks/made_subblocked.csv#made_subblocked", "r");
    EXPECT_TRUE(named.IsOpen());
}

}  // namespace
