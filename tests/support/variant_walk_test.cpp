// The walk over all values, the plain records, and what deep nesting does to everything.
#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/array.h"
#include "support/c_variant.h"
#include "support/strtab.h"
#include "support/value_vector.h"
#include "support/variant.h"
#include "support/variant_walker.h"
#include "tests/support/variant_building.h"

namespace {

using zol::testing_support::map_of;
using zol::testing_support::nested_maps;
using zol::testing_support::nested_vectors;
using zol::testing_support::vector_of;

std::vector<std::string> walked(MVariant value) {
    std::vector<std::string> texts;
    for (VariantWalker at = value.Begin(); at != value.End(); ++at) {
        texts.push_back(at->AsString());
    }
    return texts;
}

TEST(VariantWalker, VisitsContainersAndThenWhatIsInThem) {
    using Texts = std::vector<std::string>;
    EXPECT_EQ(walked(5), Texts({"5"}));
    EXPECT_EQ(walked(MVariant(MV_VECTOR)), Texts({""}));
    EXPECT_EQ(
        walked(vector_of({1, vector_of({}), vector_of({2, map_of({{"b", 4}, {"a", 3}})}), 5})),
        Texts({"1  2 a->3 b->4 5", "1", "", "2 a->3 b->4", "2", "a->3 b->4", "3", "4", "5"}));
}

TEST(VariantWalker, UnsharesAVectorWhenItStepsIn) {
    const MVariant kept = vector_of({vector_of({1, 2}), 3});
    MVariant changed = kept;
    VariantWalker at = changed.Begin();
    EXPECT_EQ(kept.Vector(), changed.Vector());
    for (++at; at != changed.End(); ++at) {
        if (at->Kind() == MV_INT) {
            *at += 10;
        }
    }
    EXPECT_EQ(changed, vector_of({vector_of({11, 12}), 13}));
    EXPECT_EQ(kept, vector_of({vector_of({1, 2}), 3}));
    EXPECT_EQ(++at, changed.End());
}

CVariant record(MVariantKind kind, std::uint64_t payload) {
    return {payload, kind};
}

// Copies that are kept share the vector again and again while the walk goes on.
TEST(VariantWalker, IsNotLedAstrayByCopiesAndChangesOnItsWay) {
    MVariant root = vector_of({1, 2, 3, 4});
    std::vector<MVariant> kept;
    std::vector<int> seen;
    for (VariantWalker at = root.Begin(); at != root.End(); ++at) {
        kept.push_back(root);
        if (at->Kind() == MV_INT) {
            seen.push_back(at->AsInt());
        }
        if (seen.size() == 2) {
            root[3] = 40;
        }
    }
    EXPECT_EQ(seen, std::vector<int>({1, 2, 3, 40}));
    EXPECT_EQ(kept.front().AsString(), "1 2 3 4");
}

TEST(CVariant, ConvertsWithAllThatIsInIt) {
    array_t* const vector = array_New(sizeof(CVariant));
    strtab_t* const map = strtab_New();
    strtab_SetCallbacks(
        map,
        [](const void* value) -> void* {
            return new CVariant(*static_cast<const CVariant*>(value));
        },
        [](void* value) { delete static_cast<CVariant*>(value); });
    const char text[] = "text";
    const CVariant records[] = {
        record(MV_EMPTY, 0),
        record(MV_DOUBLE, std::bit_cast<std::uint64_t>(1.5)),
        record(MV_STRING, std::bit_cast<std::uint64_t>(&text[0])),
        record(MV_INT, 0xABCDFFFFFFFB),
        record(MV_POINTER, 9),
        record(MV_INT64, 7),
        record(static_cast<MVariantKind>(8), 7),
        record(MV_VECTOR, 0),
        record(MV_MAP, 0),
        record(MV_STRING, 0),
    };
    for (const CVariant& each : records) {
        array_AddCopy(vector, &each);
    }
    const CVariant elements = record(MV_VECTOR, std::bit_cast<std::uint64_t>(vector));
    strtab_Set(map, "list", &elements);
    const CVariant whole = record(MV_MAP, std::bit_cast<std::uint64_t>(map));

    const MVariant expected =
        vector_of({MVariant(), 1.5, "text", -5, MVariant::Pointer(9), MVariant::OfWord(MV_INT64, 7),
                   MVariant(), MVariant(MV_VECTOR), MVariant(MV_MAP), ""});
    EXPECT_EQ(MVariant(&whole), map_of({{"list", expected}}));
    MVariant assigned("before");
    assigned = &elements;
    EXPECT_EQ(assigned, expected);
    EXPECT_FALSE(MVariant(static_cast<const CVariant*>(nullptr)).IsDefined());

    EXPECT_EQ(cvariant_Count(&elements), 10);
    EXPECT_EQ(cvariant_Count(&whole), 0);
    EXPECT_EQ(cvariant_At(&elements, 4)->payload, 9U);
    EXPECT_EQ(cvariant_Get(&whole, "list")->payload, elements.payload);
    const CVariant* const nothing = cvariant_At(&elements, 10);
    EXPECT_EQ(nothing->kind, MV_EMPTY);
    for (const CVariant* none :
         {cvariant_At(&elements, -1), cvariant_At(&whole, 0), cvariant_Get(&whole, "List"),
          cvariant_Get(&elements, "list"), cvariant_Get(nullptr, "list")}) {
        EXPECT_EQ(none, nothing);
    }
    std::int32_t count = -1;
    EXPECT_EQ(cvariant_Keys(&elements, &count), nullptr);
    EXPECT_EQ(count, 0);
    char** const keys = cvariant_Keys(&whole, &count);
    ASSERT_EQ(count, 1);
    EXPECT_STREQ(keys[0], "list");
    std::free(keys[0]);
    std::free(static_cast<void*>(keys));
    strtab_Free(map);
    array_Free(vector);
}

// Deep enough to wear out any stack, were one of these to call itself.
TEST(VariantDepth, CostsNoStack) {
    constexpr int kDepth = 200000;
    for (MVariant value : {nested_vectors(kDepth), nested_maps(kDepth)}) {
        SCOPED_TRACE(value.Kind());
        MVariant copy = value;
        EXPECT_EQ(copy, value);
        copy += value;
        EXPECT_EQ(copy.Size(), value.Kind() == MV_VECTOR ? 2 : 1);
        EXPECT_EQ(value.AsString().size(), value.Kind() == MV_VECTOR ? 0U : 3U * (kDepth - 1));
        int steps = 0;
        for (VariantWalker at = value.Begin(); at != value.End(); ++at) {
            ++steps;
        }
        EXPECT_EQ(steps, kDepth);
        value.Clear();
        EXPECT_TRUE(copy.IsDefined());
    }
}

TEST(VariantDepth, OfPlainRecordsCostsNoStack) {
    CVariant value{};
    std::vector<array_t*> vectors;
    for (int i = 0; i < 200000; ++i) {
        vectors.push_back(array_New(sizeof(CVariant)));
        array_AddCopy(vectors.back(), &value);
        value = record(MV_VECTOR, std::bit_cast<std::uint64_t>(vectors.back()));
    }
    const MVariant converted(&value);
    EXPECT_EQ(converted.Size(), 1);
    for (array_t* const vector : vectors) {
        array_Free(vector);
    }
}

}  // namespace
