// What values are made of and what they are as numbers and texts.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "support/variant.h"
#include "tests/support/variant_building.h"

namespace {

using zol::testing_support::map_of;
using zol::testing_support::vector_of;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t kLeast32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kLeast64 = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMost64 = std::numeric_limits<std::int64_t>::max();

TEST(VariantConvert, KindFollowsTheWidthOfANumber) {
    EXPECT_EQ(MVariant(std::int64_t{2147483647}).Kind(), MV_INT);
    EXPECT_EQ(MVariant(std::int64_t{2147483648}).Kind(), MV_INT64);
    EXPECT_EQ(MVariant(std::int64_t{-2147483648}).Kind(), MV_INT);
    EXPECT_EQ(MVariant(std::int64_t{-2147483649}).Kind(), MV_INT64);
    MVariant value("text");
    EXPECT_EQ((value = 5).Kind(), MV_INT);
    EXPECT_EQ((value = 5.0).Kind(), MV_DOUBLE);
    EXPECT_EQ((value = std::size_t{1} << 40).Kind(), MV_INT64);
    EXPECT_EQ((value = "5").Kind(), MV_STRING);
}

TEST(VariantConvert, AKindThatDoesNotExistIsEmpty) {
    EXPECT_EQ(MVariant(static_cast<MVariantKind>(0xFFFFFFFF)).Kind(), MV_EMPTY);
    // A code that another library has left in a value.
    MVariant value(7);
    const std::uint32_t code = 8;
    std::memcpy(static_cast<void*>(&value), &code, sizeof code);
    EXPECT_FALSE(value.IsDefined());
    EXPECT_EQ(value.AsInt(), 0);
    EXPECT_EQ(value, MVariant());
    value += 3;
    EXPECT_EQ(value, MVariant(3));
}

TEST(VariantConvert, LaysOutKindAndThenPayload) {
    const MVariant value = MVariant::Pointer(0x0123456789ABCDEF);
    std::uint32_t kind = 0;
    std::uint64_t payload = 0;
    std::memcpy(&kind, static_cast<const void*>(&value), sizeof kind);
    std::memcpy(&payload, reinterpret_cast<const char*>(&value) + 8, sizeof payload);
    EXPECT_EQ(kind, 6U);
    EXPECT_EQ(payload, 0x0123456789ABCDEFU);
}

TEST(VariantConvert, GivesNumbersByKind) {
    struct Row {
        MVariant value;
        double real;
        std::int32_t narrow;
        std::int64_t wide;
    };
    const std::vector<Row> rows = {
        {MVariant(), 0, 0, 0},
        {2.5, 2.5, 2, 2},
        {3.5, 3.5, 4, 4},
        {-2.5, -2.5, -2, -2},
        {-0.5, -0.5, 0, 0},
        {0.49999999999999994, 0.49999999999999994, 0, 0},
        {4503599627370497.5, 4503599627370497.5, kLeast32, 4503599627370498},
        {2147483647.4, 2147483647.4, 2147483647, 2147483647},
        {2147483647.5, 2147483647.5, kLeast32, 2147483648},
        {-2147483648.5, -2147483648.5, kLeast32, -2147483648},
        {9223372036854775808.0, 9223372036854775808.0, kLeast32, kLeast64},
        {-kInfinity, -kInfinity, kLeast32, kLeast64},
        {"2.5", 2.5, 2, 2},
        {"2.7", 2.7, 3, 2},
        {"-2.7", -2.7, -3, -2},
        {"1e300", 1e300, kLeast32, kLeast64},
        {5, 5, 5, 5},
        {-5, -5, -5, -5},
        {std::int64_t{0x1FFFFFFFE}, 8589934590.0, -2, 0x1FFFFFFFE},
        {kMost64, 9223372036854775808.0, -1, kMost64},
        {MVariant::Pointer(0xFFFFFFFF00000007), 0, 7, -4294967289},
        {vector_of({1}), 0, 0, 0},
        {map_of({{"a", 1}}), 0, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.value));
        EXPECT_EQ(row.value.AsDouble(), row.real);
        EXPECT_EQ(row.value.AsInt(), row.narrow);
        EXPECT_EQ(row.value.AsInt64(), row.wide);
    }
    EXPECT_EQ(MVariant(kNan).AsInt(), kLeast32);
    EXPECT_EQ(MVariant(kNan).AsInt64(), kLeast64);
}

TEST(VariantConvert, ReadsTheNumberAtTheBeginningOfAText) {
    struct Row {
        const char* text;
        double number;
    };
    const Row rows[] = {
        {"", 0},
        {"x1", 0},
        {" \t\n\v\f\r1.5", 1.5},
        {"+1.5", 1.5},
        {"-1.5", -1.5},
        {"+-1", 0},
        {"--1", 0},
        {"- 1", 0},
        {"-", 0},
        {"-0", -0.0},
        {"1,5", 1},
        {"1.5.5", 1.5},
        {".5", 0.5},
        {"5.", 5},
        {".", 0},
        {"1e", 1},
        {"1e+", 1},
        {"1e2x", 100},
        {"0x1A", 26},
        {"0X.8p1", 1},
        {"-0x10", -16},
        {"0x", 0},
        {"0x1p-1074", 5e-324},
        {"0x1p9999", kInfinity},
        {"0x1,8", 1},
        {"0x1p-9999", 0},
        {"0x1p", 1},
        {"0x1p-99999999999999999999", 0},
        {"0x0.00000000000000000000p9999", 0},
        {"0xfffffffffffffffp1000", kInfinity},
        {"1e999", kInfinity},
        {"-1e999", -kInfinity},
        {"1e-999", 0},
        {"INF", kInfinity},
        {"-infinity", -kInfinity},
        {"infinite", kInfinity},
        {"in", 0},
        {"9007199254740993", 9007199254740992},
        {"9007199254740993.0000000000000000000000000000001", 9007199254740994},
    };
    for (const Row& row : rows) {
        const double number = MVariant(row.text).AsDouble();
        EXPECT_EQ(number, row.number) << row.text;
        EXPECT_EQ(std::signbit(number), std::signbit(row.number)) << row.text;
    }
    EXPECT_NE(MVariant("nan").AsDouble(), MVariant("nan").AsDouble());
    EXPECT_EQ(MVariant(std::string("1\0"
                                   "2",
                                   3))
                  .AsDouble(),
              1.0);
}

TEST(VariantConvert, GivesTextsByKind) {
    struct Row {
        MVariant value;
        int argument;
        std::string text;
    };
    const std::vector<Row> rows = {
        {MVariant(), -1, ""},
        {1.5, -1, "1.5"},
        {2.0, -1, "2.0"},
        {0.5, -1, "0.5"},
        {100.0, -1, "100.0"},
        {-0.0, -1, "-0.0"},
        {0.1234565, -1, "0.123456"},
        {1e-7, -1, "0.0"},
        {2.5, 0, "2"},
        {3.5, 0, "4"},
        {0.125, 2, "0.12"},
        {0.375, 2, "0.38"},
        {1.5, 2000000000, "1.5"},
        {0.1, 60, "0.1000000000000000055511151231257827021181583404541015625"},
        {1e22, -1, "10000000000000000000000.0"},
        {kInfinity, -1, "inf"},
        {-kInfinity, 3, "-inf"},
        {kNan, -1, "nan"},
        {"a \"b\"", 5, "a \"b\""},
        {-7, 5, "-7"},
        {kLeast64, -1, "-9223372036854775808"},
        {MVariant::Pointer(0x1AB), -1, "0x00000000000001AB"},
        {vector_of({1, 2, 3}), -1, "1 2 3"},
        {vector_of({1, 2, 3}), 44, "1,2,3"},
        {vector_of({1, vector_of({0.5, "x"}), MVariant()}), 44, "1,0.5 x,"},
        {vector_of({1, 2}), -2,
         "1\xFE"
         "2"},
        {vector_of({1, 2}), 300, "1,2"},
        {vector_of({}), 44, ""},
        {map_of({}), -1, ""},
        // In the order of the table, whatever that of the insertion.
        {map_of({{"b", 2}, {"a", vector_of({1, "x"})}}), 44, "a->1 x b->2"},
        {vector_of({1, map_of({{"a", 2}, {"b", 3}})}), 44, "1,a->2 b->3"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.value.AsString(row.argument), row.text);
    }
    const std::string great = MVariant(1e308).AsString(300);
    EXPECT_EQ(great.size(), 311U);
    EXPECT_EQ(great.substr(0, 18), "100000000000000001");
    EXPECT_EQ(great.substr(309), ".0");
}

/// What is wrong with the buffer of a process that has not asked for a text before.
std::string faults_of_fresh_buffer() {
    struct Row {
        std::size_t length;
        std::size_t capacity;
        bool is_grown;
    };
    constexpr Row kRows[] = {
        {5, 1024, true},      {1023, 1024, false}, {1024, 1536, true},  {3, 1536, false},
        {1535, 1536, false},  {1536, 2304, true},  {2303, 2304, false}, {2305, 3457, true},
        {50000, 75000, true}, {0, 75000, false},
    };
    constexpr std::size_t kMostRounding = 32;  // of the allocator
    const char* before = nullptr;
    std::string faults;
    for (const Row& row : kRows) {
        const std::string text(row.length, 'x');
        const char* const buffer = MVariant(text).AsCString();
        const std::size_t room = ::malloc_usable_size(const_cast<char*>(buffer));
        const bool is_of_size = room >= row.capacity && room < row.capacity + kMostRounding;
        const bool is_kept = row.is_grown || buffer == before;
        if (buffer != text || !is_of_size || !is_kept) {
            faults += std::to_string(row.length) + " bytes: room for " + std::to_string(room) +
                      (is_kept ? "\n" : ", moved\n");
        }
        before = buffer;
    }
    return faults;
}

// In a process of its own, since the buffer never shrinks.
TEST(VariantConvertDeathTest, BufferGrowsByHalfOfTheTextThatDoesNotFit) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const std::string faults = faults_of_fresh_buffer();
            std::fputs(faults.c_str(), stderr);
            std::_Exit(faults.empty() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST(VariantConvert, KeepsTextsOfAnyLengthInOneBuffer) {
    const char* const first = MVariant("short").AsCString();
    EXPECT_STREQ(first, "short");
    EXPECT_EQ(MVariant(std::string(1023, 'x')).AsCString(), first);
    for (const std::size_t length : {1024U, 1535U, 1536U, 100000U}) {
        const std::string text(length, 'y');
        EXPECT_EQ(MVariant(text).AsCString(), text);
    }
    EXPECT_STREQ(MVariant(12).AsCString(), "12");
}

}  // namespace
