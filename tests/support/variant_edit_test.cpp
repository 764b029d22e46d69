// Elements and entries: access, growth, insertion, removal, and who shares what.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/value_vector.h"
#include "support/variant.h"
#include "tests/support/variant_building.h"

namespace {

using zol::testing_support::map_of;
using zol::testing_support::vector_of;

int references(const MVariant& vector) {
    return vector.Vector()->references;
}

TEST(VariantEdit, VectorIsSharedUntilOneSideWrites) {
    MVariant one = vector_of({1, "x"});
    MVariant other = one;
    EXPECT_EQ(one.Vector(), other.Vector());
    EXPECT_EQ(references(one), 2);
    EXPECT_EQ(one.At(1).AsString(), "x");
    EXPECT_EQ(one.Vector(), other.Vector()) << "reading unshared it";

    other[0] = 5;
    EXPECT_EQ(one, vector_of({1, "x"}));
    EXPECT_EQ(other, vector_of({5, "x"}));
    EXPECT_EQ(references(one), 1);
    EXPECT_EQ(references(other), 1);
    EXPECT_EQ(one.Vector()->Array().capacity, other.Vector()->Array().capacity);
}

TEST(VariantEdit, EveryChangeOfASharedVectorUnsharesIt) {
    struct Row {
        const char* name;
        void (*change)(MVariant&);
    };
    const Row rows[] = {
        {"access", [](MVariant& v) { v[0]; }},
        {"insertion", [](MVariant& v) { v.InsertAt(0, 9); }},
        {"removal", [](MVariant& v) { v.RemoveAt(0); }},
        {"addition of an element", [](MVariant& v) { v += 9; }},
        {"addition of a vector", [](MVariant& v) { v += vector_of({9}); }},
        {"addition of itself", [](MVariant& v) { v += v; }},
        {"clearing", [](MVariant& v) { v.Clear(); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const MVariant kept = vector_of({1, 2});
        MVariant changed = kept;
        row.change(changed);
        EXPECT_EQ(kept, vector_of({1, 2}));
        EXPECT_EQ(references(kept), 1);
    }
    MVariant shared = vector_of({1, 2});
    const MVariant kept = shared;
    shared.RemoveAt(2);
    shared.RemoveAt(0, 0);
    EXPECT_EQ(references(kept), 2) << "nothing was changed";
}

TEST(VariantEdit, MapIsNeverShared) {
    MVariant one = map_of({{"a", map_of({{"b", 1}})}, {"v", vector_of({1})}});
    MVariant other = one;
    other["a"]["b"] = 2;
    other["v"][0] = 2;
    EXPECT_EQ(one, map_of({{"a", map_of({{"b", 1}})}, {"v", vector_of({1})}}));
    EXPECT_EQ(other, map_of({{"a", map_of({{"b", 2}})}, {"v", vector_of({2})}}));
}

TEST(VariantEdit, AccessMakesTheContainerAndTheElement) {
    MVariant value("text");
    value[3] = 1;
    EXPECT_EQ(value, vector_of({MVariant(), MVariant(), MVariant(), 1}));
    value["k"]["l"] = 2;
    EXPECT_EQ(value, map_of({{"k", map_of({{"l", 2}})}}));
    EXPECT_EQ(value["K"], MVariant()) << "keys are told apart by case";
    EXPECT_EQ(value.Size(), 2);
    MVariant& entry = value["k"];
    for (int i = 0; i < 1000; ++i) {
        value[std::to_string(i)] = i;
    }
    EXPECT_EQ(&entry, &value["k"]) << "an entry stays where it is";
}

// From 10 on doubled until the index is below it; the array adds its scratch slot.
TEST(VariantEdit, VectorGrowsByDoubling) {
    struct Row {
        std::vector<int> indices;
        int capacity;
    };
    const Row rows[] = {{{0}, 11},  {{9}, 11},     {{10}, 21},
                        {{39}, 41}, {{0, 11}, 23}, {{1000}, 1281}};
    for (const Row& row : rows) {
        MVariant value;
        for (const int index : row.indices) {
            value[index];
        }
        EXPECT_EQ(value.Vector()->Array().capacity, row.capacity) << row.indices.back();
        EXPECT_EQ(value.Size(), row.indices.back() + 1);
    }
}

TEST(VariantEdit, ConstAccessGivesTheEmptyConstant) {
    const MVariant vector = vector_of({1});
    const MVariant map = map_of({{"k", 1}});
    EXPECT_EQ(&vector.At(1), &MVariant::Empty());
    EXPECT_EQ(&map.At(0), &MVariant::Empty());
    EXPECT_EQ(&map.Get("l"), &MVariant::Empty());
    EXPECT_EQ(&vector.Get("k"), &MVariant::Empty());
    EXPECT_TRUE(map.HasKey("k"));
    EXPECT_FALSE(map.HasKey("l"));
    EXPECT_FALSE(vector.HasKey("k"));
    EXPECT_EQ(vector.Size(), 1);
}

TEST(VariantEdit, NegativeIndexIsToldAndHarmsNothing) {
    MVariant vector = vector_of({1});
    testing::internal::CaptureStderr();
    EXPECT_FALSE(vector.At(-1).IsDefined());
    vector[-2] = "lost";
    EXPECT_FALSE(vector[-2].IsDefined());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Array index out of bounds : -1.\nArray index out of bounds : -2.\n"
              "Array index out of bounds : -2.\n");
    EXPECT_EQ(vector, vector_of({1}));
}

TEST(VariantEdit, Inserts) {
    const MVariant u;
    struct Row {
        const char* name;
        MVariant before;
        int index;
        MVariant after;
    };
    const std::vector<Row> rows = {
        {"in front", vector_of({1, 2}), 0, vector_of({"x", 1, 2})},
        {"below 0", vector_of({1, 2}), -7, vector_of({"x", 1, 2})},
        {"within", vector_of({1, 2}), 1, vector_of({1, "x", 2})},
        {"at the end", vector_of({1, 2}), 2, vector_of({1, 2, "x"})},
        {"past the end, the gap behind", vector_of({1, 2}), 5, vector_of({1, 2, "x", u, u, u})},
        {"into another kind", 5, 1, vector_of({"x", u})},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        MVariant value = row.before;
        MVariant& place = value.InsertAt(row.index, "x");
        EXPECT_EQ(value, row.after);
        EXPECT_EQ(&place, &value[std::max(row.index, 0)]);
    }
    MVariant value = vector_of({"first", 2});
    value.InsertAt(0, value[1]);
    value.InsertAt(0, value);
    EXPECT_EQ(value, vector_of({vector_of({2, "first", 2}), 2, "first", 2}));
}

TEST(VariantEdit, Removes) {
    struct Row {
        int index;
        int count;
        MVariant after;
    };
    const std::vector<Row> rows = {
        {0, 1, vector_of({1, 2, 3})},    {3, 1, vector_of({0, 1, 2})},
        {1, 2, vector_of({0, 3})},       {1, 3, vector_of({0})},
        {1, 2147483647, vector_of({0})}, {2, -1, vector_of({0, 1})},
        {0, 0, vector_of({0, 1, 2, 3})}, {-1, 1, vector_of({0, 1, 2, 3})},
        {4, 1, vector_of({0, 1, 2, 3})}, {4, -5, vector_of({0, 1, 2, 3})},
    };
    for (const Row& row : rows) {
        MVariant value = vector_of({0, 1, 2, 3});
        value.RemoveAt(row.index, row.count);
        EXPECT_EQ(value, row.after) << row.index << ", " << row.count;
    }
    MVariant map = map_of({{"a", 1}, {"b", 2}});
    map.RemoveAt(0);
    map.RemoveKey("c");
    map.RemoveKey("a");
    EXPECT_EQ(map, map_of({{"b", 2}}));
    MVariant text("a");
    text.RemoveKey("a");
    EXPECT_EQ(text, "a");
}

TEST(VariantEdit, ListsKeys) {
    const MVariant map = map_of({{"b", 1}, {"B", 2}, {"a_", 3}, {"\xC4", 4}, {"C", 5}});
    using Keys = std::vector<std::string>;
    EXPECT_EQ(map.SortedKeys(false), Keys({"B", "C", "a_", "b", "\xC4"}));
    EXPECT_EQ(map.SortedKeys(true), Keys({"a_", "B", "b", "C", "\xC4"}));
    // By hash and 7, then by insertion: B is 66, a_ 97 * 33 + 95, and so on.
    const auto keys = map.Keys();
    EXPECT_EQ(Keys(keys.begin(), keys.end()), Keys({"a_", "b", "B", "C", "\xC4"}));
    EXPECT_TRUE(MVariant("a").Keys().empty());
    EXPECT_TRUE(vector_of({1}).SortedKeys(true).empty());
}

TEST(VariantEdit, KeyMayBeOfTheTextThatItReplaces) {
    MVariant value("a text too long to be kept in place");
    value[*value.Text()] = 1;
    EXPECT_EQ(value.AsString(), "a text too long to be kept in place->1");
}

TEST(VariantEdit, PartMayBeAssignedToTheWhole) {
    MVariant value = map_of({{"a", map_of({{"b", vector_of({1, "x"})}})}});
    value = value["a"];
    value = value["b"];
    EXPECT_EQ(value, vector_of({1, "x"}));
    value = std::move(value[1]);
    EXPECT_EQ(value, "x");
    MVariant& same = value;
    value = same;
    EXPECT_EQ(value, "x");
}

}  // namespace
