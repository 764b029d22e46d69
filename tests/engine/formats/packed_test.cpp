// Packed runs give back what was put in, in the bytes that they should need.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "engine/formats/decimal.h"
#include "engine/formats/packed_numbers.h"
#include "engine/formats/packed_texts.h"

namespace {

using zol::engine::Decimal;
using zol::engine::NumberPacker;
using zol::engine::PackedNumbers;
using zol::engine::PackedTexts;
using zol::engine::read_decimal;
using zol::engine::TextPacker;

// An empty text stands for a missing number.
PackedNumbers pack(const std::vector<std::string>& texts) {
    NumberPacker packer;
    for (const std::string& text : texts) {
        Decimal number;
        if (read_decimal(text, '.', number)) {
            packer.Add(number);
        } else {
            packer.AddMissing();
        }
    }
    return packer.Finish();
}

TEST(PackedNumbers, GiveBackEveryNumberInFewBytes) {
    struct Case {
        std::vector<std::string> texts;
        std::size_t bytes_each;
    };
    const Case cases[] = {
        {{"1", "2", "", "254"}, 1},
        {{"7000000.1", "7000000.3", "7000025.4"}, 1},
        {{"0", "255"}, 2},
        {{"-0.5", "", "600.25"}, 2},
        {{"0.00001", "1", "40000.5"}, 4},
        {{"-9223372036854775808", "5", "", "9223372036854775806"}, 8},
        {{"1e300", "0.1", ""}, 8},
        {{"-0.0", "5"}, 8},
        {{"inf", "1"}, 8},
        {{"", ""}, 1},
        {{"123456789012345678", "0.5"}, 8},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.texts.back());
        const PackedNumbers packed = pack(c.texts);
        ASSERT_EQ(packed.Size(), c.texts.size());
        EXPECT_EQ(packed.Bytes(), c.texts.size() * c.bytes_each);
        for (std::size_t i = 0; i < c.texts.size(); ++i) {
            Decimal number;
            if (read_decimal(c.texts[i], '.', number)) {
                EXPECT_EQ(packed.At(i), number.Value());
                EXPECT_EQ(std::signbit(packed.At(i)), std::signbit(number.Value()));
            } else {
                EXPECT_TRUE(std::isnan(packed.At(i)));
            }
        }
    }
}

TEST(PackedNumbers, KnowWholeNumbersToTheLastDigit) {
    const PackedNumbers packed = pack({"9007199254740993", "", "-9223372036854775807"});
    std::int64_t whole = 0;
    ASSERT_TRUE(packed.WholeAt(0, whole));
    EXPECT_EQ(whole, 9007199254740993);
    EXPECT_FALSE(packed.WholeAt(1, whole));
    ASSERT_TRUE(packed.WholeAt(2, whole));
    EXPECT_EQ(whole, -9223372036854775807);
    EXPECT_FALSE(pack({"1.5"}).WholeAt(0, whole));
}

TEST(PackedNumbers, SurviveRandomRunsFromOnePacker) {
    std::mt19937_64 random(11);
    NumberPacker packer;
    for (int run = 0; run < 300; ++run) {
        const int decimals = static_cast<int>(random() % 9);
        const std::uint64_t range = std::uint64_t{1} << (random() % 60);
        std::vector<double> expected;
        for (int i = 0; i < 50; ++i) {
            std::string text = std::to_string(random() % range);
            if (random() % 3 != 0 && decimals > 0) {
                text += "." + std::to_string(random() % 1000000000)
                                  .substr(0, static_cast<std::size_t>(decimals));
            }
            Decimal number;
            ASSERT_TRUE(read_decimal(text, '.', number));
            packer.Add(number);
            expected.push_back(number.Value());
        }
        const PackedNumbers packed = packer.Finish();
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ASSERT_EQ(packed.At(i), expected[i]);
        }
    }
}

TEST(PackedTexts, KeepEachDifferentTextOnce) {
    TextPacker packer;
    const std::vector<std::string> words = {"OXIDE", "", "FRESH", "OXIDE", std::string("a\0b", 3)};
    for (int round = 0; round < 100; ++round) {
        for (const std::string& word : words) {
            packer.Add("letters of " + word, [&] { return word; });
        }
    }
    const PackedTexts packed = packer.Finish();
    for (std::size_t i = 0; i < 500; ++i) {
        ASSERT_EQ(packed.At(i), words[i % words.size()]);
    }
    EXPECT_LT(packed.Bytes(), 500U + 100U);
    packer.Add("next", [] { return std::string("next"); });
    EXPECT_EQ(packer.Finish().At(0), "next");
}

}  // namespace
