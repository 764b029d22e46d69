// Reading the text form: what is read, and with which fault reading stops.
#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "support/variant.h"
#include "tests/support/variant_building.h"
#include "tests/support/variant_text_form.h"

namespace {

using zol::testing_support::map_of;
using zol::testing_support::parsed;
using zol::testing_support::Result;
using zol::testing_support::vector_of;

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

}  // namespace
