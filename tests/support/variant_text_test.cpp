// The text form: what is read, with which fault reading stops, and the bytes written.
#include <gtest/gtest.h>

#include <cfenv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/number_text.h"
#include "support/variant.h"
#include "tests/engine/temporary_file.h"
#include "tests/support/random_variant.h"
#include "tests/support/variant_building.h"

namespace {

using zol::testing_support::map_of;
using zol::testing_support::random_text;
using zol::testing_support::random_variant;
using zol::testing_support::TemporaryFile;
using zol::testing_support::vector_of;

struct Result {
    MVariant value;
    int fault;
    MVariant errors;
};

Result parsed(const std::string& text, MVariant before = {}) {
    std::istringstream stream(text);
    Result result{std::move(before), -1, {}};
    const bool is_read = result.value.ParseText(stream, result.fault, result.errors);
    EXPECT_EQ(is_read, result.fault == 0);
    return result;
}

std::string written(const MVariant& value) {
    const TemporaryFile file("what was there before, and longer than what comes");
    EXPECT_TRUE(value.WriteText(file.Path().c_str()));
    std::ifstream in(file.Path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(VariantText, IsRead) {
    struct Row {
        std::string text;
        MVariant value;
    };
    const MVariant u;
    const std::vector<Row> rows = {
        {"5\n", 5},
        {" \t\r\n\v\f5 ", 5},
        {"5.0\n", 5.0},
        {"99999999999\n", std::int64_t{99999999999}},
        {"99999999999999999999\n", std::numeric_limits<std::int64_t>::max()},
        {"007\n", 7},
        {"-1\n", -1.0},
        {"+5\n", 5.0},
        {"-\n", 0.0},
        {".5e1\n", 5.0},
        {"1e5-3\n", 1e5},
        {"1E2\n", 100.0},
        {"5*note\n", 5},
        {"undef", u},
        {"\"a\"", "a"},
        {"\"a\\\"\\\\\\n\"", "a\"\\n"},
        {"\"a\nb\"", "a\nb"},
        {"\"a\" \n\t\"b\"\"c\" x", "abc"},
        {"\"a", "a\xFF"},
        {"\"a\\", "a\xFF"},
        {std::string("\"a\0b\"", 5), std::string("a\0b", 3)},
        {"*note\n5\n", 5},
        {"*one\n*two\n \n*three\n5\n", 5},
        {"[*a comment within a line\n1,*and another\n2]", vector_of({1, 2})},
        {"[]", MVariant(MV_VECTOR)},
        {"[1,2,]", vector_of({1, 2})},
        {"[u,u]", vector_of({u, u})},
        {"[ [ ] , [\"a\" \"b\"],{ } ]", vector_of({vector_of({}), vector_of({"ab"}), map_of({})})},
        {"{}", MVariant(MV_MAP)},
        {"{\"a\"=1,\"b\" = 2 ,}", map_of({{"a", 1}, {"b", 2}})},
        {"{\"a\" \"b\"=1}", map_of({{"ab", 1}})},
        {"{\"a\"=1,\"a\"=2}", map_of({{"a", 2}})},
        {"{\"a\"=[1,2],\"a\"=[3]}", map_of({{"a", vector_of({3, 2})}})},
        {std::string("{\"a\0b\"=1}", 9), map_of({{"a", 1}})},
        {"0x1F\n", u},
        {"[7x1F,-xff,0x,0xg", MVariant()},
        {"[7x1F,-xff,0x]", vector_of({u, u, u})},
        {"{\"a\"=\"text\",\"a\"=0x10}", map_of({{"a", u}})},
        {"{\"a\"=\"text\",\"a\"=0x}", map_of({{"a", "text"}})},
        {"{\"a\"=1,\"a\"=0x10}", map_of({{"a", 16}})},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_TRUE(parsed(row.text).value.Equals(row.value, 0, false, false))
            << testing::PrintToString(parsed(row.text).value);
    }
}

TEST(VariantText, PutsAHexadecimalWordBehindTheEmptyValue) {
    struct Row {
        const char* text;
        std::uint64_t word;
    };
    const Row rows[] = {{"0x1F ", 0x1F},
                        {"9xAbCdEf0123456789,", 0xABCDEF0123456789},
                        {"0x00000000000000000010 ", 0x10},
                        {"0x10000000000000000 ", 0xFFFFFFFFFFFFFFFF},
                        {"0x ", 0}};
    for (const Row& row : rows) {
        const Result result = parsed(row.text);
        EXPECT_EQ(result.fault, 0) << row.text;
        EXPECT_EQ(result.value.Kind(), MV_EMPTY) << row.text;
        EXPECT_EQ(result.value.Word(), row.word) << row.text;
    }
}

TEST(VariantText, AddsToTheContainerThatIsThere) {
    EXPECT_EQ(parsed("[7]", vector_of({1, 2})).value, vector_of({7, 2}));
    EXPECT_EQ(parsed("[7]", map_of({{"a", 1}})).value, vector_of({7}));
    EXPECT_EQ(parsed("{\"b\"=2}", map_of({{"a", 1}})).value, map_of({{"a", 1}, {"b", 2}}));
    const MVariant shared = vector_of({1, 2});
    EXPECT_EQ(parsed("[7]", shared).value, vector_of({7, 2}));
    EXPECT_EQ(shared, vector_of({1, 2}));
}

TEST(VariantText, FaultStopsTheReadingAndIsTold) {
    const std::string no_separator =
        "missing expected item separator ',' or missing expected ']' end of vector";
    const std::string vector = "Error parsing variant vector";
    const std::string map = "Error parsing variant map/hash";
    const std::string none = "Error parsing variant";
    const std::string no_value = "missing expected variant vector/map/string/diff/undef";
    const std::string end = "Unexpected End Of File";
    struct Row {
        std::string text;
        int number;
        int line;
        std::string message;
        std::string explain;
    };
    const std::vector<Row> rows = {
        {"", 1, 0, end, ""},
        {" \n\t\n", 1, 2, end, ""},
        {"5", 1, 0, end, ""},
        {"0x1F", 1, 0, end, ""},
        {"*only a comment\n", 1, 0, end, ""},
        {"*only a comment", 1, 0, end, ""},
        {"[", 1, 0, end, ""},
        {"[1,", 1, 0, end, ""},
        {"[1", 1, 0, end, ""},
        {"[1 ", 2, 0, vector, no_separator},
        {"[1 2]", 2, 0, vector, no_separator},
        {"[1}", 2, 0, vector, no_separator},
        {"[-inf]", 2, 0, vector, no_separator},
        // The newline behind a number is read again, and counted again: thrice behind a
        // single digit.
        {"[12\n3]", 2, 2, vector, no_separator},
        {"[1\n2]", 2, 3, vector, no_separator},
        {"[\"a\"\n2]", 2, 1, vector, no_separator},
        {"[\"a\n\n\"\n2]", 2, 1, vector, no_separator},
        {"[*comment\n\"a\"\n*comment\n\n2]", 2, 2, vector, no_separator},
        {"[u u]", 2, 0, vector, no_separator},
        {"{\"a\"=1 \"b\"=2}", 3, 0, map, "missing expected item separator ','"},
        {"{\"a\"=1]", 3, 0, map, "missing expected item separator ','"},
        {"{\"a\"=u", 3, 0, map, "missing expected item separator ','"},
        {"{\"a\":1}", 4, 0, map, "missing expected operator '='"},
        {"{\"a\"", 4, 0, map, "missing expected operator '='"},
        {"{a=1}", 5, 0, map, "missing expected '}' end of map"},
        {"{,}", 5, 0, map, "missing expected '}' end of map"},
        {"{", 5, 0, map, "missing expected '}' end of map"},
        {"{\"a\"=1,\n\n", 5, 2, map, "missing expected '}' end of map"},
        {"[,]", 6, 0, none, no_value},
        {"[1,,2]", 6, 0, none, no_value},
        {"{\"a\"=}", 6, 0, none, no_value},
        {"\n true", 6, 1, none, no_value},
        {" *no comment behind a blank\n5\n", 6, 0, none, no_value},
        {"\xFF", 6, 0, none, no_value},
        {std::string(1, '\0'), 6, 0, none, no_value},
        {"[[[{\"a\"=[x]}]]]", 6, 0, none, no_value},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const Result result = parsed(row.text, vector_of({1, 2, 3}));
        EXPECT_FALSE(result.value.IsDefined());
        EXPECT_EQ(result.fault, row.number);
        MVariant errors = map_of({{"message", row.message},
                                  {"line", row.line},
                                  {"number", row.number},
                                  {"type", "severe"}});
        if (!row.explain.empty()) {
            errors["explain"] = row.explain;
        }
        EXPECT_EQ(result.errors, errors);
    }
}

TEST(VariantText, EndOfFileHasNoExplanationOfAnEarlierFault) {
    MVariant value;
    MVariant errors;
    int fault = 0;
    for (const char* text : {"[1 2]", "["}) {
        std::istringstream stream(text);
        value.ParseText(stream, fault, errors);
    }
    EXPECT_EQ(fault, 1);
    EXPECT_FALSE(errors.HasKey("explain"));
}

TEST(VariantText, StreamIsReadNoFurtherThanTheValue) {
    std::istringstream stream("[1] 2 \"a\" {}!");
    int fault = -1;
    MVariant errors;
    for (const MVariant& expected : {vector_of({1}), MVariant(2), MVariant("a"), map_of({})}) {
        MVariant value;
        EXPECT_TRUE(value.ParseText(stream, fault, errors));
        EXPECT_EQ(value, expected);
    }
    EXPECT_EQ(stream.get(), '!');
    EXPECT_FALSE(errors.IsDefined());
    MVariant value;
    EXPECT_FALSE(value.ParseText(stream, fault, errors));
    EXPECT_EQ(fault, 1);
    EXPECT_TRUE(stream.eof());
}

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
        // Not every machine has one of these.
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) break;
        }
        std::fesetround(FE_UPWARD);
    }
    ~StrangeSurroundings() {
        std::fesetround(FE_TONEAREST);
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, "C");
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
