// Numbers of cells: what is one, and that it comes back as the nearest double.
#include "engine/formats/decimal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "engine/formats/number_text.h"

namespace {

using zol::engine::Decimal;
using zol::engine::number_text;
using zol::engine::read_decimal;

struct Case {
    const char* text;
    char point;
    bool is_number;
    double value;
};

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(ReadDecimal, TakesWholeTextsOnly) {
    const Case cases[] = {
        {"0", '.', true, 0.0},
        {"12.75", '.', true, 12.75},
        {"-.5", '.', true, -0.5},
        {"5.", '.', true, 5.0},
        {"+1e-3", '.', true, 1e-3},
        {"-0", '.', true, -0.0},
        {"0.1", '.', true, 0.1},
        {"12,75", ',', true, 12.75},
        {"1,5e3", ',', true, 1500.0},
        {"9007199254740993", '.', true, 9007199254740992.0},
        {"900719925474099.31", '.', true, 900719925474099.31},
        {"123456789012345678901234567890", '.', true, 123456789012345678901234567890.0},
        {"1e308", '.', true, 1e308},
        {"4.9406564584124654e-324", '.', true, 4.9406564584124654e-324},
        {"1.25D-02", '.', true, 0.0125},
        {"3d2", '.', true, 300.0},
        {"1,5D+1", ',', true, 15.0},
        {"D5", '.', false, 0},
        {"5D", '.', false, 0},
        {"Infinity", '.', true, kInfinity},
        {"-inf", '.', true, -kInfinity},
        {"1e999", '.', false, 0},
        {"", '.', false, 0},
        {".", '.', false, 0},
        {"-", '.', false, 0},
        {"+-5", '.', false, 0},
        {"1.2.3", '.', false, 0},
        {"12.75", ',', false, 0},
        {"1,234.5", ',', false, 0},
        {"0x10", '.', false, 0},
        {"12 ", '.', false, 0},
        {"1e", '.', false, 0},
        {"nan", '.', false, 0},
        {"5 m", '.', false, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        Decimal number;
        ASSERT_EQ(read_decimal(c.text, c.point, number), c.is_number);
        if (c.is_number) {
            EXPECT_EQ(number.Value(), c.value);
            EXPECT_EQ(std::signbit(number.Value()), std::signbit(c.value));
        }
    }
}

TEST(ReadDecimal, KeepsWholeNumbersToTheLastDigit) {
    for (const std::int64_t whole :
         {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(),
          std::int64_t{9007199254740993}, std::int64_t{-123456789012345678}}) {
        Decimal number;
        ASSERT_TRUE(read_decimal(std::to_string(whole), '.', number));
        EXPECT_TRUE(number.exact);
        EXPECT_EQ(number.digits, whole);
    }
}

// strtod of the C library rounds correctly and knows nothing of our short cuts.
TEST(ReadDecimal, RoundsAsTheCLibraryDoes) {
    std::mt19937_64 random(7);
    std::uniform_int_distribution<std::uint64_t> digits;
    std::uniform_int_distribution<int> length(1, 19);
    for (int i = 0; i < 20000; ++i) {
        std::string text =
            std::to_string(digits(random)).substr(0, static_cast<std::size_t>(length(random)));
        text.insert(digits(random) % (text.size() + 1), 1, '.');
        if (i % 5 == 0) {
            text += "e" + std::to_string(static_cast<int>(digits(random) % 600) - 320);
        }
        Decimal number;
        const double expected = std::strtod(text.c_str(), nullptr);
        ASSERT_EQ(read_decimal(text, '.', number), std::isfinite(expected)) << text;
        if (std::isfinite(expected)) {
            ASSERT_EQ(number.Value(), expected) << text;
        }
    }
}

TEST(NumberText, IsShortAndReadsBack) {
    EXPECT_EQ(number_text(100000.0), "100000");
    EXPECT_EQ(number_text(0.1), "0.1");
    EXPECT_EQ(number_text(1e22), "1e+22");
    EXPECT_EQ(number_text(-0.00001), "-0.00001");
    EXPECT_EQ(number_text(7000000.123), "7000000.123");
    EXPECT_EQ(number_text(0.853837F), "0.853837");
    std::mt19937_64 random(8);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::ldexp(static_cast<double>(random()) - 9e18,
                                        static_cast<int>(random() % 400) - 260);
        Decimal number;
        ASSERT_TRUE(read_decimal(number_text(value), '.', number));
        ASSERT_EQ(number.Value(), value);
    }
}

}  // namespace
