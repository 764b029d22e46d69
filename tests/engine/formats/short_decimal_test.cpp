// The fast way through numbers agrees with the careful one, or stands back.
#include "engine/formats/short_decimal.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using zol::engine::are_same_characters;
using zol::engine::Decimal;
using zol::engine::kBytesBefore;
using zol::engine::read_decimal;
using zol::engine::read_short_decimal;

// A text behind bytes that may be read but say nothing.
struct Placed {
    std::string bytes;
    const char* begin;
    const char* end;

    Placed(const std::string& text, char before)
        : bytes(std::string(kBytesBefore, before) + text),
          begin(bytes.data() + kBytesBefore),
          end(bytes.data() + bytes.size()) {}
    Placed(const Placed&) = delete;
    Placed& operator=(const Placed&) = delete;
};

TEST(ReadShortDecimal, AgreesWithTheCarefulReaderOrStandsBack) {
    std::mt19937 random(13);
    const std::string letters = "01234567890123456789012345678901234567890123456789..-+e, ";
    int read = 0;
    for (int round = 0; round < 200'000; ++round) {
        std::string text;
        const std::size_t length = random() % 19;
        while (text.size() < length) {
            text += letters[random() % letters.size()];
        }
        const char point = random() % 4 == 0 ? ',' : '.';
        const Placed placed(text, letters[random() % letters.size()]);
        Decimal quick;
        if (!read_short_decimal(placed.begin, placed.end, point, quick)) {
            continue;
        }
        ++read;
        Decimal careful;
        ASSERT_TRUE(read_decimal(text, point, careful)) << text;
        ASSERT_EQ(quick.Value(), careful.Value()) << text;
        // With more digits than are exact the careful one rounds, to the same number.
        if (careful.exact) {
            ASSERT_EQ(quick.digits, careful.digits) << text;
            ASSERT_EQ(quick.scale, careful.scale) << text;
        }
    }
    EXPECT_GT(read, 50'000) << "usual numbers are to be read";
}

TEST(AreSameCharacters, ComparesUpToSixteen) {
    for (std::size_t length = 1; length <= 16; ++length) {
        std::string text(length, '7');
        const Placed a(text, 'a');
        const Placed same(text, 'b');
        EXPECT_TRUE(are_same_characters(a.end, same.end, length)) << length;
        for (std::size_t i = 0; i < length; ++i) {
            std::string changed = text;
            changed[i] = '8';
            const Placed other(changed, 'a');
            EXPECT_FALSE(are_same_characters(a.end, other.end, length)) << length << ' ' << i;
        }
    }
    const Placed longer(std::string(17, '7'), 'a');
    EXPECT_FALSE(are_same_characters(longer.end, longer.end, 17));
    EXPECT_FALSE(are_same_characters(longer.end, longer.end, 0));
}

}  // namespace
