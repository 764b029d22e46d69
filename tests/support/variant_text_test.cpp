// The text form both ways: the bytes written, what becomes of damaged ones, and that
// nothing around the process changes either.
#include <gtest/gtest.h>

#include <cfenv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <locale>
#include <random>
#include <string>
#include <vector>

#include "support/number_text.h"
#include "support/variant.h"
#include "tests/engine/temporary_file.h"
#include "tests/made_locales.h"
#include "tests/support/random_variant.h"
#include "tests/support/variant_building.h"
#include "tests/support/variant_text_form.h"

namespace {

using zol::testing_support::map_of;
using zol::testing_support::parsed;
using zol::testing_support::random_text;
using zol::testing_support::random_variant;
using zol::testing_support::Result;
using zol::testing_support::TemporaryFile;
using zol::testing_support::vector_of;
using zol::testing_support::written;

TEST(VariantText, IsWrittenToTheByte) {
    EXPECT_EQ(written(map_of({{"a", 1}, {"b", vector_of({"x"})}})),
              "{\n \"a\" = 1,\n \"b\" = \n  [\n    \"x\"\n  ]\n}\n");
    const MVariant all = map_of({
        {"b", MVariant()},
        {"A", 1.5},
        {"a", -2},
        {"C\"\\", "q\"\\\n"},
        {"d", MVariant::OfWord(MV_INT64, 5)},
        {"e", MVariant::Pointer(0xABC)},
        {"f", map_of({})},
        {"g",
         vector_of({vector_of({MVariant(), MVariant::Pointer(1)}), map_of({{"k", 0.1}}), "z"})},
    });
    EXPECT_EQ(written(all),
              "{\n"
              " \"A\" = 1.500000,\n"
              " \"a\" = -2,\n"
              " \"b\" = u,\n"
              " \"C\\\"\\\\\" = \"q\\\"\\\\\n\",\n"
              " \"d\" = 5,\n"
              " \"e\" = \n  0x0000000000000ABC,\n"
              " \"f\" = \n  {\n  },\n"
              " \"g\" = \n"
              "  [\n"
              "    [\n"
              "      u,\n"
              "      0x0000000000000001\n"
              "    ],\n"
              "    {\n"
              "     \"k\" = 0.100000\n"
              "    },\n"
              "    \"z\"\n"
              "  ]\n"
              "}\n");
}

TEST(VariantText, WritesDoublesWithSixDecimals) {
    struct Row {
        double number;
        const char* text;
    };
    const Row rows[] = {
        {0.0, "0.000000\n"},
        {-0.0, "-0.000000\n"},
        {0.0000005, "0.000000\n"},
        {0.00000051, "0.000001\n"},
        {-1e-300, "-0.000000\n"},
        // Exact halves of the last decimal go to the even side.
        {0.0000152587890625, "0.000015\n"},
        {1.0 / 128, "0.007812\n"},
        {3.0 / 128, "0.023438\n"},
        {999999.9999999, "1000000.000000\n"},
        {9007199254740993.0, "9007199254740992.000000\n"},
        {1e22, "10000000000000000000000.000000\n"},
        {std::numeric_limits<double>::infinity(), "inf\n"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(written(row.number), row.text);
    }
    // The C library says the same of numbers of every size.
    std::mt19937 random(3);
    for (int i = 0; i < 200000; ++i) {
        const auto word = std::uint64_t{random()} << 32 | random();
        const int size = zol::testing_support::random_below(random, 120) - 60;
        const double number =
            std::ldexp(static_cast<double>(static_cast<std::int64_t>(word)), size - 63);
        char expected[100];
        std::snprintf(expected, sizeof expected, "%.6f", number);
        std::string text;
        zol::support::append_fixed(text, number, 6);
        ASSERT_EQ(text, expected);
    }
}

TEST(VariantText, FileThatCantBeOpenedIsLeftOut) {
    MVariant value("kept");
    MVariant errors;
    EXPECT_FALSE(value.ReadText("/no such folder/value", errors));
    EXPECT_FALSE(errors.IsDefined());
    EXPECT_EQ(value, "kept");
    EXPECT_FALSE(value.WriteText("/no such folder/value"));
    // A device on which every write fails, where there is one.
    EXPECT_FALSE(value.WriteText("/dev/full"));
}

// What the text form makes of a value: six decimals, no pointers, negative numbers as
// doubles, 64 bits only where needed.
MVariant as_text_keeps(const MVariant& value) {
    switch (value.Kind()) {
        case MV_DOUBLE:
            return MVariant(value.AsString(6)).AsDouble();
        case MV_INT:
        case MV_INT64:
            return value.AsInt64() < 0 ? MVariant(value.AsDouble()) : MVariant(value.AsInt64());
        case MV_POINTER:
            return {};
        case MV_VECTOR: {
            MVariant kept(MV_VECTOR);
            for (int i = 0; i < value.Size(); ++i) {
                kept[i] = as_text_keeps(value.At(i));
            }
            return kept;
        }
        case MV_MAP: {
            MVariant kept(MV_MAP);
            for (const std::string& key : value.Keys()) {
                kept[key] = as_text_keeps(value.Get(key));
            }
            return kept;
        }
        default:
            return value;
    }
}

TEST(VariantText, WrittenValuesAreReadBack) {
    std::mt19937 random(1);
    const TemporaryFile file("");
    for (int i = 0; i < 300; ++i) {
        const MVariant value = random_variant(random);
        ASSERT_TRUE(value.WriteText(file.Path().c_str()));
        MVariant again;
        MVariant errors;
        ASSERT_TRUE(again.ReadText(file.Path().c_str(), errors)) << errors.AsString();
        ASSERT_TRUE(again.Equals(as_text_keeps(value), 0, false, false)) << i;
        // A stream gives what a file gives.
        ASSERT_TRUE(parsed(written(value)).value.Equals(again, 0, false, false)) << i;
    }
}

// Files are read in pieces, and any token may lie across two of them.
TEST(VariantText, LongFilesAreReadAsTheyWereWritten) {
    std::mt19937 random(2);
    MVariant value(MV_VECTOR);
    for (int i = 0; i < 40000; ++i) {
        value[i] = i % 2 == 0 ? MVariant(static_cast<int>(random() % 100000))
                              : MVariant(random_text(random));
    }
    value += std::string(2000000, '"');
    const TemporaryFile file("");
    ASSERT_TRUE(value.WriteText(file.Path().c_str()));
    MVariant again;
    MVariant errors;
    ASSERT_TRUE(again.ReadText(file.Path().c_str(), errors)) << errors.AsString();
    EXPECT_TRUE(again.Equals(value, 0, false, false));
}

TEST(VariantText, EveryTruncationAndEveryFlippedBitIsReadOrRefused) {
    const std::string whole = written(map_of({{"a", vector_of({1, -2.5, "te\\xt", MVariant()})},
                                              {"b", map_of({{"c", 1e6}})},
                                              {"d", 7}}));
    for (std::size_t size = 0; size + 2 < whole.size(); ++size) {
        const Result result = parsed(whole.substr(0, size));
        EXPECT_NE(result.fault, 0) << size;
        EXPECT_TRUE(result.errors.HasKey("message")) << size;
    }
    for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
        std::string flipped = whole;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ 1 << bit % 8);
        const Result result = parsed(flipped);
        EXPECT_EQ(result.errors.IsDefined(), result.fault != 0) << bit;
        EXPECT_EQ(result.value.IsDefined(), result.fault == 0) << bit;
    }
}

TEST(VariantText, DeepNestingCostsNoStack) {
    constexpr std::size_t kDepth = 1000000;
    EXPECT_EQ(parsed(std::string(kDepth, '[')).fault, 1);
    const Result vectors = parsed(std::string(kDepth, '[') + std::string(kDepth, ']'));
    EXPECT_EQ(vectors.fault, 0);
    EXPECT_EQ(vectors.value.Size(), 1);
    // A map takes more room.
    std::string maps;
    for (std::size_t i = 0; i < kDepth / 5; ++i) {
        maps += "{\"\"=";
    }
    EXPECT_EQ(parsed(maps).fault, 1);
    EXPECT_EQ(parsed(maps + "u" + std::string(kDepth / 5, '}')).value.Size(), 1);
}

/// A decimal comma, digits in groups, and numbers that round upwards, for a while.
class StrangeSurroundings {
public:
    StrangeSurroundings() : locale_(std::locale(std::locale(), new Comma)) {
        std::locale::global(locale_);
        if (made_.Set("de_DE", "UTF-8")) {
            EXPECT_STREQ(std::localeconv()->decimal_point, ",");
        }
        std::fesetround(FE_UPWARD);
    }
    ~StrangeSurroundings() {
        std::fesetround(FE_TONEAREST);
        std::locale::global(std::locale::classic());
    }
    StrangeSurroundings(const StrangeSurroundings&) = delete;
    StrangeSurroundings& operator=(const StrangeSurroundings&) = delete;

private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale locale_;
    zol::testing_support::MadeLocales made_;
};

std::vector<std::string> answers() {
    const MVariant value =
        vector_of({1234567.125, 0.1, -0.1, 1e-7, 1234567, "0x1.00000000000008p0"});
    MVariant sum(0.1);
    sum += 0.2;
    std::vector<std::string> texts = {written(value), value.AsString(), value.At(0).AsString(2),
                                      sum.AsString(60), written(MVariant(-0.0000005))};
    for (const char* number : {"0.1", "1234.5", "1,5", "1e-320", "9007199254740993", "2.5",
                               "0x1.00000000000008p0", "123456789012345678901234567890e-10"}) {
        const MVariant text(number);
        texts.push_back(MVariant(text.AsDouble()).AsString(1074));
        texts.push_back(std::to_string(text.AsInt()));
        texts.push_back(
            MVariant(parsed(std::string(number) + ".\n").value.AsDouble()).AsString(60));
    }
    texts.push_back(MVariant(MVariant((std::int64_t{1} << 53) + 1).AsDouble()).AsString());
    texts.push_back(std::to_string(MVariant(2.5).AsInt()));
    texts.push_back(MVariant(1.0) == MVariant(1.000001) ? "same" : "different");
    return texts;
}

TEST(VariantText, NeitherLocaleNorRoundingModeChangesAnything) {
    const std::vector<std::string> usual = answers();
    std::vector<std::string> strange;
    {
        const StrangeSurroundings surroundings;
        strange = answers();
    }
    EXPECT_EQ(strange, usual);
}

}  // namespace
