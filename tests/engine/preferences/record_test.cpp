// Values as records: everything arrives, in containers of its own, however deep.
#include "engine/preferences/record.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <string>

#include "support/strtab.h"

namespace zol::engine {
namespace {

TEST(PreferenceRecord, HoldsWhatTheValueHolds) {
    MVariant all;
    all["empty"] = MVariant();
    all["double"] = -2.5;
    all["text"] = "l\xC3\xA4nge";
    all["no text"] = "";
    all["int"] = -7;
    all["int64"] = std::numeric_limits<std::int64_t>::min();
    all["pointer"] = MVariant::Pointer(0xFEDCBA9876543210U);
    all["vector"][2] = "third";
    all["vector"][0]["in"][1] = 4;
    all["no vector"] = MVariant(MV_VECTOR);
    all["no map"] = MVariant(MV_MAP);
    const MVariant before = all;
    CVariant record = record_of(all);
    all.Clear();
    EXPECT_EQ(MVariant(&record), before);
    // Containers that are copied are copied whole.
    strtab_t* const copy = strtab_Clone(std::bit_cast<strtab_t*>(record.payload));
    clear_record(record);
    EXPECT_FALSE(MVariant(&record).IsDefined());
    record.payload = std::bit_cast<std::uint64_t>(copy);
    record.kind = MV_MAP;
    EXPECT_EQ(MVariant(&record), before);
    clear_record(record);
}

TEST(PreferenceRecord, IsMadeAndReleasedAtAnyDepth) {
    MVariant deep;
    for (int i = 0; i < 200000; ++i) {
        MVariant outer;
        if (i % 2 == 0) {
            outer[0].swap(deep);
        } else {
            outer["in"].swap(deep);
        }
        outer.swap(deep);
    }
    CVariant record = record_of(deep);
    int depth = 0;
    for (const CVariant* at = &record; at->kind != MV_EMPTY; ++depth) {
        at = at->kind == MV_VECTOR ? cvariant_At(at, 0) : cvariant_Get(at, "in");
    }
    EXPECT_EQ(depth, 200000);
    clear_record(record);
}

}  // namespace
}  // namespace zol::engine
