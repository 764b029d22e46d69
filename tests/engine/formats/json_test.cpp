#include "engine/formats/json.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <utility>

#include "engine/formats/read_error.h"

namespace zol::engine {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using Dialect = JsonDocument::Dialect;

std::string fault_of(const std::function<void()>& action) {
    try {
        action();
    } catch (const ReadError& error) {
        return error.what();
    }
    return "no fault";
}

TEST(Json, RefusesWhatIsNotJsonAndSaysWhere) {
    struct Row {
        std::string text;
        const char* place;
    };
    const Row rows[] = {
        {"", "byte 0:"},
        {"{", "byte 1:"},
        {"[1,]", "byte 3:"},
        {"[1] 2", "byte 4:"},
        {"\xEF\xBB\xBF[1] 2", "byte 7:"},
        {"{'a':1}", "byte 1:"},
        {"[1e999]", "byte 1:"},
        {"[1, -1e309]", "byte 4:"},
        {"[01]", "byte 2:"},
        {"[1.]", "byte 3:"},
        {"[+1]", "byte 1:"},
        {"[NaN]", "byte 1:"},
        {"[\"\xC3\x28\"]", "byte 2:"},
        {std::string("[1]\0[2]", 7), "byte 3:"},
        {"\xEF{}", "byte 0:"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const std::string fault = fault_of([&] { JsonDocument(row.text, Dialect::Strict); });
        EXPECT_THAT(fault, HasSubstr(row.place));
    }
}

TEST(Json, NamesThePlaceOfWhatHasTheWrongType) {
    const JsonDocument document(
        R"({"schema":{"fields":[{"name":"a"},{"name":7}]},"block:model":{"count":[1,2.5,"x"]},
            "big":[18446744073709551615,1e300],"absent":null})",
        Dialect::Strict);
    const JsonValue root = document.Root();
    const JsonValue count = root.Get("block:model").Get("count");
    struct Row {
        std::function<void()> action;
        const char* fault;
    };
    const Row rows[] = {
        {[&] { root.Get("schema").Get("fields").At(1).Get("name").Text(); },
         "$.schema.fields[1].name is a number, a text is expected"},
        {[&] { root.Get("schema").Size(); }, "$.schema is an object, a list is expected"},
        {[&] { root.Get("schema").Get("fields").At(2); }, "$.schema.fields has no item 2"},
        {[&] { count.Find("x"); }, "$[\"block:model\"].count is a list, an object is expected"},
        {[&] { count.At(1).Whole(); },
         "$[\"block:model\"].count[1] is not a whole number of 64 bits"},
        {[&] { count.Numbers(); }, "$[\"block:model\"].count[2] is a text, a number is expected"},
        {[&] { count.Numbers(2); }, "$[\"block:model\"].count has 3 items, 2 are expected"},
        {[&] { root.Get("big").At(0).Whole(); }, "$.big[0] is not a whole number of 64 bits"},
        {[&] { root.Get("big").At(1).Whole(); }, "$.big[1] is not a whole number of 64 bits"},
        {[&] { root.Get("absent"); }, "$ has no \"absent\""},
        {[&] { root.Get("big").Bool(); }, "$.big is a list, true or false is expected"},
    };
    for (const Row& row : rows) EXPECT_EQ(fault_of(row.action), row.fault);
    EXPECT_FALSE(root.Find("absent").has_value());
}

TEST(Json, ReadsValues) {
    const JsonDocument document(
        "\xEF\xBB\xBF{\"n\":[-9223372036854775808,9223372036854775807,3.0],"
        "\"x\":[0.1,-0.0,1e22],\"t\":\"a\\u0000b\\u00e9\",\"b\":true,\"b\":false}",
        Dialect::Strict);
    const JsonValue root = document.Root();
    EXPECT_EQ(root.Get("n").At(0).Whole(), INT64_MIN);
    EXPECT_EQ(root.Get("n").At(1).Whole(), INT64_MAX);
    EXPECT_EQ(root.Get("n").At(2).Whole(), 3);
    EXPECT_THAT(root.Get("x").Numbers(), ElementsAre(0.1, 0.0, 1e22));
    EXPECT_TRUE(std::signbit(root.Get("x").At(1).Number()));
    EXPECT_EQ(root.Get("t").Text(), std::string("a\0b\xC3\xA9", 5));
    EXPECT_TRUE(root.Get("b").Bool()) << "the first of a repeated key counts";
    EXPECT_EQ(root.Members().size(), 5U);
}

TEST(Json, ReadsBareTokensWhereTheDialectHasThem) {
    const JsonDocument document("[NaN,Infinity,-Infinity]", Dialect::WithNonFinite);
    EXPECT_TRUE(std::isnan(document.Root().At(0).Number()));
    EXPECT_EQ(document.Root().At(1).Number(), HUGE_VAL);
    EXPECT_EQ(document.Root().At(2).Number(), -HUGE_VAL);
    EXPECT_EQ(fault_of([&] { document.Root().At(0).Whole(); }),
              "$[0] is not a whole number of 64 bits");
}

TEST(Json, RoundsNumbersCorrectly) {
    std::mt19937_64 random(20240501);
    for (int i = 0; i < 20000; ++i) {
        std::string text = std::to_string(random());
        text.insert(1, ".");
        if (i % 3 == 0) text += std::to_string(random());
        text += "e" + std::to_string(static_cast<int>(random() % 600) - 310);
        const JsonDocument document("[" + text + "]", Dialect::Strict);
        ASSERT_EQ(document.Root().At(0).Number(), std::strtod(text.c_str(), nullptr)) << text;
    }
}

TEST(Json, ReadsNumbersAtTheEdges) {
    const std::string zeros = "0." + std::string(400, '0');
    const std::string texts[] = {zeros,
                                 zeros + "1e400",
                                 "-" + zeros + "e-5",
                                 "0e-400",
                                 "1e-400",
                                 "4.9e-324",
                                 "2.2250738585072011e-308",
                                 "1.7976931348623157e308",
                                 "179769313486231570" + std::string(291, '0'),
                                 "18446744073709551617",
                                 "9007199254740993.0"};
    for (const std::string& text : texts) {
        const JsonDocument document("[" + text + "]", Dialect::WithNonFinite);
        EXPECT_EQ(document.Root().At(0).Number(), std::strtod(text.c_str(), nullptr)) << text;
    }
}

TEST(Json, NestsTwoHundredLevelsAndNoMore) {
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    // Lists beside each other do not add up.
    const JsonDocument document("[" + nested(199) + "," + nested(199) + "]", Dialect::Strict);
    JsonValue value = document.Root();
    while (value.Size() > 0) value = value.At(0);
    const std::string fault = fault_of([&] { value.At(0); });
    EXPECT_THAT(fault, HasSubstr("$...[0]"));
    EXPECT_LT(fault.size(), 500U);

    std::string objects;
    for (int i = 0; i < 201; ++i) objects += "{\"a\":";
    const std::pair<std::string, const char*> too_deep[] = {
        {nested(201), "JSON nested deeper than 200 levels at byte 200"},
        {std::string(30'000'000, '['), "JSON nested deeper than 200 levels at byte 200"},
        {objects, "JSON nested deeper than 200 levels at byte 1000"},
    };
    for (const auto& [text, expected] : too_deep) {
        EXPECT_EQ(fault_of([&t = text] { JsonDocument(t, Dialect::Strict); }), expected);
    }
}

}  // namespace
}  // namespace zol::engine
