// Comparison and addition.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "support/variant.h"
#include "tests/support/variant_building.h"

namespace {

using zol::testing_support::map_of;
using zol::testing_support::vector_of;

MVariant wide(std::int64_t number) {
    return MVariant::OfWord(MV_INT64, static_cast<std::uint64_t>(number));
}

TEST(VariantCompare, OperatorComparesKindAndContent) {
    struct Row {
        MVariant left;
        MVariant right;
        bool same;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Row> rows = {
        {MVariant(), MVariant(), true},
        {5, wide(5), false},
        {5, 5.0, false},
        {MVariant::Pointer(5), wide(5), false},
        {MVariant::Pointer(5), MVariant::Pointer(5), true},
        {1.0, 1.0 + 1e-7, true},
        {1.0, 1.0 + 1e-5, false},
        {nan, 1.0, true},
        {"a", "A", false},
        {"a", "a", true},
        {std::string("a\0b", 3), std::string("a\0c", 3), false},
        {vector_of({1, 2}), vector_of({1, 2}), true},
        {vector_of({1, 2}), vector_of({2, 1}), false},
        {vector_of({1, 2}), vector_of({1, 2, MVariant()}), false},
        {vector_of({1, vector_of({2})}), vector_of({1, vector_of({3})}), false},
        {map_of({{"a", 1}, {"b", 2}}), map_of({{"b", 2}, {"a", 1}}), true},
        {map_of({{"a", 1}, {"A", 2}}), map_of({{"A", 2}, {"a", 1}}), true},
        {map_of({{"a", 1}}), map_of({{"A", 1}}), false},
        {map_of({{"a", 1}}), map_of({{"a", 1}, {"b", MVariant()}}), false},
        {map_of({{"a", vector_of({1})}}), map_of({{"a", vector_of({2})}}), false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.left) + " and " +
                     testing::PrintToString(row.right));
        EXPECT_EQ(row.left == row.right, row.same);
        EXPECT_EQ(row.right == row.left, row.same);
        EXPECT_NE(row.left != row.right, row.same);
    }
}

TEST(VariantCompare, ToleranceAndCaseReachInsideContainers) {
    const MVariant one = map_of({{"Key", vector_of({"Text", 1.0})}});
    const MVariant case_of_text = map_of({{"Key", vector_of({"tEXT", 1.0})}});
    const MVariant case_of_key = map_of({{"kEY", vector_of({"Text", 1.0})}});
    const MVariant number = map_of({{"Key", vector_of({"Text", 1.5})}});
    EXPECT_FALSE(one.Equals(case_of_text, 0, false, true));
    EXPECT_TRUE(one.Equals(case_of_text, 0, true, false));
    EXPECT_FALSE(one.Equals(case_of_key, 0, true, false));
    EXPECT_TRUE(one.Equals(case_of_key, 0, false, true));
    EXPECT_FALSE(one.Equals(number, 0.4, true, true));
    EXPECT_TRUE(one.Equals(number, 0.5, false, false));
    const MVariant shared = one.Get("Key");
    EXPECT_FALSE(shared.Equals(one.Get("Key"), -1, false, false)) << "no difference is below 0";
}

TEST(VariantMerge, AddsByTheKindsOfBothSides) {
    const std::int64_t high = std::int64_t{3} << 32;
    struct Row {
        MVariant left;
        MVariant right;
        MVariant result;
    };
    const MVariant empty;
    const std::vector<Row> rows = {
        {empty, "x", "x"},
        {empty, empty, empty},
        {1.5, 2.0, 3.5},
        {1.5, 2, 3.5},
        {1.5, wide(2), 3.5},
        {1.5, "2", empty},
        {1.5, empty, 1.5},
        {"a", "b", "ab"},
        {"a", 65, "aA"},
        {"a", wide(high + 65), "aA"},
        {"a", 0, std::string("a\0", 2)},
        {"a", 255, "a\xFF"},
        {"a", 256, empty},
        {"a", -1, empty},
        {"a", 65.0, empty},
        {"a", vector_of({"b"}), empty},
        {1, 2.5, 3.5},
        {wide(1), 2.5, 3.5},
        {1, 2, 3},
        {2147483647, 1, -2147483647 - 1},
        {wide(high + 0xFFFFFFFF), 1, wide(high)},
        {wide(high), -1, wide(high + 0xFFFFFFFF)},
        {wide(1), wide(high), wide(high + 1)},
        {1, wide(high + 1), 2},
        {-1, wide(3), 2},
        {wide(std::numeric_limits<std::int64_t>::max()), wide(1),
         wide(std::numeric_limits<std::int64_t>::min())},
        {1, "2", empty},
        {vector_of({1}), vector_of({2, vector_of({3})}), vector_of({1, 2, vector_of({3})})},
        {vector_of({1}), map_of({{"a", 2}}), vector_of({1, map_of({{"a", 2}})})},
        {vector_of({1}), empty, vector_of({1})},
        {map_of({{"a", 1}}), vector_of({2}), empty},
        {map_of({{"a", 1}, {"b", 1}}), map_of({{"b", 2}, {"c", 2}}),
         map_of({{"a", 1}, {"b", 2}, {"c", 2}})},
        {map_of({{"m", map_of({{"a", 1}, {"n", map_of({{"x", 1}})}})}}),
         map_of({{"m", map_of({{"b", 2}, {"n", map_of({{"y", 2}})}})}}),
         map_of({{"m", map_of({{"a", 1}, {"b", 2}, {"n", map_of({{"x", 1}, {"y", 2}})}})}})},
        {map_of({{"m", map_of({{"a", 1}})}}), map_of({{"m", vector_of({2})}}),
         map_of({{"m", vector_of({2})}})},
        {map_of({{"m", vector_of({1})}}), map_of({{"m", map_of({{"a", 2}})}}),
         map_of({{"m", map_of({{"a", 2}})}})},
        {MVariant::Pointer(1), 2, MVariant::Pointer(1)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.left) + " += " + testing::PrintToString(row.right));
        MVariant left = row.left;
        const MVariant copy = (left += row.right);
        EXPECT_TRUE(left.Equals(row.result, 0, false, false)) << testing::PrintToString(left);
        EXPECT_EQ(copy, left);
    }
}

TEST(VariantMerge, RightSideMayBeTheLeftOneOrStandInIt) {
    MVariant vector = vector_of({"a", vector_of({"b"})});
    vector += vector;
    EXPECT_EQ(vector, vector_of({"a", vector_of({"b"}), "a", vector_of({"b"})}));
    vector += vector[1];
    vector += vector[0];
    EXPECT_EQ(vector.Size(), 6);
    EXPECT_EQ(vector.At(5), "a");

    // The right side holds the vector that grows: the copy must not follow it.
    MVariant map = map_of({{"v", vector_of({1})}});
    map["v"] += map;
    EXPECT_EQ(map, map_of({{"v", vector_of({1, map_of({{"v", vector_of({1})}})})}}));
    MVariant outer = vector_of({vector_of({1})});
    outer[0] += outer;
    EXPECT_EQ(outer, vector_of({vector_of({1, vector_of({1})})}));

    MVariant text("ab");
    text += text;
    EXPECT_EQ(text, "abab");

    MVariant whole = map_of({{"a", map_of({{"a", "inner"}, {"b", map_of({{"c", 1}})}})}});
    const MVariant part = whole["a"];
    MVariant expected = whole;
    expected += part;
    whole += whole["a"];
    EXPECT_EQ(whole, expected);
    whole += whole;
    EXPECT_EQ(whole, expected);
}

}  // namespace
