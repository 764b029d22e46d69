// Maps whose keys were made to fall into one bucket of the table. A reader that looked each
// up there would compare every key with all before it: minutes, for what is read here.
#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include "support/variant.h"

namespace {

/// Keys of one hash: "Ez" and "FY" have the same in the table, and so have all texts that
/// are made of as many of either.
std::string colliding_key(std::size_t number) {
    constexpr std::size_t kPairs = 17;
    std::string key;
    for (std::size_t pair = 0; pair < kPairs; ++pair) {
        key += (number >> pair & 1U) != 0 ? "FY" : "Ez";
    }
    return key;
}

constexpr std::size_t kKeys = 60000;

/// Each value is its key's number; the last of two of one key counts, also where the first
/// was a map that had an index itself.
std::string text_of_map(const std::string& first_value) {
    std::string text = "{ \"" + colliding_key(7) + "\" = " + first_value;
    for (std::size_t i = 0; i < kKeys; ++i) {
        text += ",\n \"" + colliding_key(i) + "\" = " + std::to_string(i);
    }
    return text + "}\n";
}

void expect_all(const MVariant& map) {
    ASSERT_EQ(map.Size(), static_cast<int>(kKeys));
    for (const std::size_t i : {std::size_t{0}, std::size_t{7}, kKeys / 2, kKeys - 1}) {
        EXPECT_EQ(map.Get(colliding_key(i)).AsInt(), static_cast<int>(i));
    }
}

TEST(VariantCollision, MapsOfOneBucketAreReadFromTextAndFromRecords) {
    for (const std::string& first : {std::string("u"), text_of_map("u"), text_of_map("{}")}) {
        std::istringstream stream(text_of_map(first));
        MVariant value;
        MVariant errors;
        int fault = -1;
        ASSERT_TRUE(value.ParseText(stream, fault, errors));
        expect_all(value);

        const auto record = value.ToBinary();
        MVariant again;
        again.FromBinary(record.get(), value.BinarySize());
        expect_all(again);
    }
}

}  // namespace
