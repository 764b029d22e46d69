// The model behind its contract: catalogue, cursor, searches, and files that no
// reader can take.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <bit>
#include <cfenv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#if defined(__SSE2__)
#include <xmmintrin.h>
#endif

#include "platform/zolBlockExport.h"
#include "tests/engine/temporary_file.h"
#include "tests/made_locales.h"

namespace {

using zol::model::block::Match;
using zol::model::block::Model;
using zol::testing_support::MadeLocales;
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

// Everything that is computed or parsed, to the last bit, on a rotated model with
// defaults, classifications and missing values.
std::vector<std::uint64_t> all_answers() {
    TemporaryFile file(
        "x;y;z;grade;kind\n-5,05;5,123;5;0,1;OX\n-5,05;15,123;5;;FR\n-15,05;5,123;5;1e-310;?\n");
    file.WriteSidecar(R"({"schema":{"fields":[{"name":"grade","type":"number","block:default":-0.3},
        {"name":"kind","type":"string","block:translations":["OX","FR"],"block:default":"OX"}]},
        "block:model":{"origin":[-0.05,0.123,0],"rotation":[90,0,0],"parentSize":[10,10,10]}})");
    Model model(file.Path(), "r");
    std::vector<double> answers;
    const auto add = [&](const zol::geometry::Coord3D& point) {
        answers.insert(answers.end(), {point.x, point.y, point.z});
    };
    add(model.ToWorld(0.1, 0.2, 0.3));
    add(model.ToModel(0.1, 0.2, 0.3));
    for (model.FindFirst(); !model.IsEof(); model.Next()) {
        for (const char* name :
             {"grade", "kind", "centroid_x", "centroid_y", "size_z", "volume", "no"}) {
            answers.push_back(model.Get(name));
            // Few enough bits to be a double in every rounding mode.
            answers.push_back(
                static_cast<double>(std::hash<std::string>{}(model.GetString(name)) >> 16));
        }
        answers.push_back(model.GetBlockExtent().GetExtent().y1);
    }
    for (const double x : {-5.05, 0.1, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        answers.push_back(model.FindWorldXyz(x, 5.2, 5.1));
        answers.push_back(static_cast<double>(model.GetPosition().value));
    }
    std::vector<std::uint64_t> bits;
    for (const double answer : answers) {
        bits.push_back(std::bit_cast<std::uint64_t>(answer));
    }
    return bits;
}

TEST(Model, AnswersAlikeInAnyFloatingPointMode) {
    const std::vector<std::uint64_t> usual = all_answers();
    ASSERT_GT(usual.size(), 50U);
    for (const int rounding : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(rounding);
        const std::vector<std::uint64_t> turned = all_answers();
        EXPECT_EQ(std::fegetround(), rounding) << "the mode is the caller's";
        std::fesetround(FE_TONEAREST);
        EXPECT_EQ(turned, usual);
    }
    std::fenv_t before;
    std::fegetenv(&before);
    std::feclearexcept(FE_ALL_EXCEPT);
    ::feenableexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW);
    const std::vector<std::uint64_t> trapping = all_answers();
    EXPECT_EQ(::fegetexcept(), FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW);
    std::fesetenv(&before);
    EXPECT_EQ(trapping, usual);
#if defined(__SSE2__)
    const unsigned mode = _mm_getcsr();
    _mm_setcsr(mode | 0x8040);
    const std::vector<std::uint64_t> flushing = all_answers();
    _mm_setcsr(mode);
    EXPECT_EQ(flushing, usual);
#endif
}

TEST(Model, AnswersAlikeInALocaleWithDecimalCommas) {
    const std::vector<std::uint64_t> usual = all_answers();
    MadeLocales locales;
    ASSERT_TRUE(locales.Set("de_DE", "UTF-8"));
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_EQ(all_answers(), usual);
}

TEST(Model, NeverPutsADefaultForWhatCanNoLongerBeRead) {
    TemporaryFile file("x,y,z,grade,rock\n0.5,0.5,0.5,,\n1.5,1.5,1.5,2,OX\n");
    file.WriteSidecar(R"({"schema":{"fields":[{"name":"grade","type":"number","block:default":0},
        {"name":"rock","type":"string","block:default":"none"}]}})");
    Model lost(file.Path(), "r");
    Model read(file.Path(), "r");
    EXPECT_EQ(read.Get("grade"), 0.0);
    EXPECT_EQ(read.GetString("rock"), "none");
    file.Rewrite("x,y,z,grade,rock\n0.5,0.5,0.5,7,FR\n");
    const std::string said = reason_of([&] {
        EXPECT_TRUE(std::isnan(lost.Get("grade")));
        EXPECT_EQ(lost.GetString("grade") + lost.GetString("rock"), "");
    });
    EXPECT_NE(said.find("has changed"), said.npos) << said;
}

TEST(Model, OutlivesItsFileTogetherWithItsMatch) {
    Model model(kSamples + "/blocks/made_subblocked.csv", "r");
    Match& match = model.GetMatch();
    EXPECT_EQ(model.Close(), 0);
    match.Close();
    EXPECT_FALSE(model.IsOpen());
    EXPECT_TRUE(model.IsEof() && match.IsEof());
    EXPECT_TRUE(std::isnan(match.Get("au_ppm")) && std::isnan(model.Get("volume")));
    EXPECT_EQ(model.Close(), 0);
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
