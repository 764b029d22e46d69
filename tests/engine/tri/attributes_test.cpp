// The types and texts of attributes.
#include <gtest/gtest.h>

#include <clocale>
#include <cstdint>
#include <limits>
#include <string>

#include "engine/tri/property_library.h"
#include "engine/tri/value_text.h"
#include "tests/made_locales.h"

namespace zol::engine::tri {
namespace {

TEST(AttributesTest, HaveTheTypeThatTheirValueNeeds) {
    const struct {
        AttributeValue value;
        const char* type;
        std::int32_t id;
        const char* text;
    } rows[] = {
        {std::int64_t{2147483647}, "INT32", 3, "2147483647"},
        {std::int64_t{-2147483648}, "INT32", 3, "-2147483648"},
        {std::int64_t{2147483648}, "INT64", 4, "2147483648"},
        {true, "BOOLEAN", 5, "true"},
        {false, "BOOLEAN", 5, "false"},
        {2.75, "DOUBLE", 6, "2.75"},
        {3.0, "DOUBLE", 6, "3"},
        {std::string("granite"), "STRING", 7, "granite"},
        {std::string("12"), "STRING", 7, "12"},
        {std::string(), "STRING", 7, ""},
        // Days of the calendar, and what only looks like one.
        {std::string("2001/12/31"), "Types.YMD_Date", 7, "2001/12/31"},
        {std::string("31/12/2001"), "Types.DMY_Date", 7, "31/12/2001"},
        {std::string("12/31/2001"), "Types.MDY_Date", 7, "12/31/2001"},
        {std::string("05/06/2001"), "Types.DMY_Date", 7, "05/06/2001"},
        {std::string("29/02/2000"), "Types.DMY_Date", 7, "29/02/2000"},
        {std::string("2001/02/29"), "STRING", 7, "2001/02/29"},
        {std::string("1900/02/29"), "STRING", 7, "1900/02/29"},
        {std::string("2001/13/01"), "STRING", 7, "2001/13/01"},
        {std::string("31/31/2001"), "STRING", 7, "31/31/2001"},
        {std::string("2001-12-31"), "STRING", 7, "2001-12-31"},
        {std::string("2001/1/31"), "STRING", 7, "2001/1/31"},
        {std::string("2001/ 1/31"), "STRING", 7, "2001/ 1/31"},
        {std::string("2001/12/31 "), "STRING", 7, "2001/12/31 "},
        {std::string("0000/12/31"), "STRING", 7, "0000/12/31"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const AttributeLibrary library({typed({"a", row.value})}, nullptr);
        const ubx::object::Property& property = *library.Begin()->second;
        std::string text = "before";
        EXPECT_EQ(property.TypeName(), row.type);
        EXPECT_EQ(property.TypeId(), row.id);
        EXPECT_EQ(&property.AsString(text, 6), &text);
        EXPECT_EQ(text, row.text);
    }
    EXPECT_EQ(typed({"comment", std::string("2001/12/31")}).type, type_of_name("STRING"));
    EXPECT_EQ(type_of_name("INT16"), nullptr);
}

TEST(AttributesTest, ReadInTheirOwnType) {
    const AttributeLibrary library(
        {
            typed({"int32", std::int64_t{-7}}),
            typed({"int64", std::int64_t{1} << 40}),
            typed({"double", -2.9}),
            typed({"boolean", true}),
            typed({"text", std::string("1e3")}),
        },
        nullptr);
    auto entry = library.Begin();
    EXPECT_EQ(entry->second->AsInt32(), -7);
    EXPECT_EQ((++entry)->second->AsInt64(), std::int64_t{1} << 40);
    EXPECT_EQ((++entry)->second->AsDouble(), -2.9);
    EXPECT_EQ(entry->second->AsInt32(), -2);
    EXPECT_TRUE((++entry)->second->AsBoolean());
    EXPECT_EQ((++entry)->second->AsDouble(), 1000.0);
    EXPECT_EQ(++entry, library.End());
}

TEST(AttributesTest, NumbersHaveSixDecimalsAtMost) {
    const double infinite = std::numeric_limits<double>::infinity();
    const struct {
        double value;
        const char* text;
    } rows[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {0.1, "0.1"},
        {2.5e-6, "0.000003"},
        {-4e-7, "0"},
        {1.0 / 3, "0.333333"},
        {-1234567.125, "-1234567.125"},
        {100, "100"},
        {0.9999999, "1"},
        {1e21, "1000000000000000000000"},
        {std::numeric_limits<double>::quiet_NaN(), "nan"},
        {infinite, "inf"},
        {-infinite, "-inf"},
    };
    testing_support::MadeLocales locales;
    ASSERT_TRUE(locales.Set("de_DE", "UTF-8"));
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    for (const auto& row : rows) EXPECT_EQ(fixed_text(row.value, 6), row.text);
    EXPECT_EQ(fixed_text(std::numeric_limits<double>::max(), 6).size(), 309U);
    EXPECT_EQ(fixed_text(2.5, 0), "2");
}

}  // namespace
}  // namespace zol::engine::tri
