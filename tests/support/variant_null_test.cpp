// Values that say they are a text, a vector or a map and have none, as another library
// may hand them over.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "support/c_variant.h"
#include "support/value_vector.h"
#include "support/variant.h"
#include "support/variant_walker.h"
#include "tests/support/variant_building.h"

namespace {

using zol::testing_support::map_of;
using zol::testing_support::null_of;
using zol::testing_support::vector_of;

constexpr MVariantKind kOwningKinds[] = {MV_STRING, MV_VECTOR, MV_MAP};

TEST(VariantNull, ReadsAsOneWithNothingInIt) {
    for (const MVariantKind kind : kOwningKinds) {
        SCOPED_TRACE(kind);
        MVariant value = null_of(kind);
        const MVariant fresh(kind);
        EXPECT_EQ(value.Kind(), kind);
        ASSERT_EQ(value.Word(), 0U);
        EXPECT_EQ(value.AsString(), "");
        EXPECT_STREQ(value.AsCString(), "");
        EXPECT_EQ(value.AsDouble(), 0.0);
        EXPECT_EQ(value.AsInt(), 0);
        EXPECT_EQ(value.AsInt64(), 0);
        EXPECT_EQ(value.Size(), 0);
        EXPECT_EQ(&value.At(0), &MVariant::Empty());
        EXPECT_EQ(&value.Get("key"), &MVariant::Empty());
        EXPECT_FALSE(value.HasKey("key"));
        EXPECT_TRUE(value.Keys().empty());
        EXPECT_TRUE(value.SortedKeys(true).empty());
        EXPECT_TRUE(value == fresh && fresh == value && value == null_of(kind));
        value.RemoveAt(0);
        value.RemoveKey("key");
        EXPECT_EQ(value.Word(), 0U) << "nothing was there to remove";
        int visited = 0;
        for (VariantWalker at = value.Begin(); at != value.End(); ++at) ++visited;
        EXPECT_EQ(visited, 1);
    }
}

TEST(VariantNull, IsCopiedToAFreshOne) {
    for (const MVariantKind kind : kOwningKinds) {
        SCOPED_TRACE(kind);
        const MVariant value = null_of(kind);
        MVariant copy(value);
        EXPECT_EQ(copy.Kind(), kind);
        EXPECT_NE(copy.Word(), 0U);
        EXPECT_EQ(value.Word(), 0U);
        MVariant assigned(5);
        assigned = value;
        EXPECT_NE(assigned.Word(), 0U);
        EXPECT_NE(assigned.Word(), copy.Word());
        // Within another value, too.
        const MVariant map = map_of({{"inner", value}});
        EXPECT_NE(map.Get("inner").Word(), 0U);
    }
    EXPECT_EQ(MVariant(null_of(MV_VECTOR)).Vector(), nullptr) << "moved and not copied";
    const MVariant null_vector = null_of(MV_VECTOR);
    EXPECT_EQ(MVariant(null_vector).Vector()->references, 1);
}

TEST(VariantNull, IsChangedAsOneWithNothingInIt) {
    struct Row {
        const char* name;
        MVariantKind kind;
        std::function<void(MVariant&)> change;
        MVariant expected;
    };
    const std::vector<Row> rows = {
        {"element", MV_VECTOR, [](MVariant& v) { v[1] = 5; }, vector_of({{}, 5})},
        {"insert", MV_VECTOR, [](MVariant& v) { v.InsertAt(0, 5); }, vector_of({5})},
        {"entry", MV_MAP, [](MVariant& v) { v["k"] = 5; }, map_of({{"k", 5}})},
        {"text += text", MV_STRING, [](MVariant& v) { v += MVariant("a"); }, "a"},
        {"text += byte", MV_STRING, [](MVariant& v) { v += 65; }, "A"},
        {"vector += vector", MV_VECTOR, [](MVariant& v) { v += vector_of({1}); }, vector_of({1})},
        {"vector += value", MV_VECTOR, [](MVariant& v) { v += 1; }, vector_of({1})},
        {"map += map", MV_MAP,
         [](MVariant& v) {
             v += map_of({{"k", 1}});
         },
         map_of({{"k", 1}})},
        {"clear", MV_VECTOR, [](MVariant& v) { v.Clear(); }, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        MVariant value = null_of(row.kind);
        row.change(value);
        EXPECT_EQ(value, row.expected);
    }
}

TEST(VariantNull, AddsNothingToItsKind) {
    struct Row {
        MVariant left;
        MVariantKind kind;
    };
    for (const Row& row :
         {Row{"a", MV_STRING}, Row{vector_of({1}), MV_VECTOR}, Row{map_of({{"k", 1}}), MV_MAP}}) {
        SCOPED_TRACE(row.kind);
        MVariant left = row.left;
        left += null_of(row.kind);
        EXPECT_EQ(left, row.left);
    }
}

TEST(VariantNull, OfThePlainRecordIsAFreshOne) {
    for (const MVariantKind kind : kOwningKinds) {
        SCOPED_TRACE(kind);
        const CVariant record{0, kind};
        const MVariant value(&record);
        EXPECT_EQ(value.Kind(), kind);
        EXPECT_NE(value.Word(), 0U);
        EXPECT_EQ(cvariant_Count(&record), 0);
        EXPECT_EQ(cvariant_At(&record, 0)->kind, MV_EMPTY);
        EXPECT_EQ(cvariant_Get(&record, "key")->kind, MV_EMPTY);
        std::int32_t count = 7;
        EXPECT_EQ(cvariant_Keys(&record, &count), nullptr);
        EXPECT_EQ(count, 0);
    }
}

}  // namespace
