// The self-test of the block cipher. What the ciphers make of a file is tested by samples
// that other programs made, in variant_file_test.cpp.
#include "support/ciphers.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace {

constexpr std::array<std::uint8_t, 8> kKey{};
constexpr std::array<std::uint8_t, 8> kZeros{};
// Eric Young's first vector: zeros under a key of zeros.
constexpr std::array<std::uint8_t, 8> kEnciphered = {0x4e, 0xf9, 0x97, 0x45,
                                                     0x61, 0x98, 0xdd, 0x78};

TEST(CipherCheck, PrintsWhatIsWrongAndGoesOn) {
    struct Row {
        const char* name;
        std::array<std::uint8_t, 8> plain;
        std::array<std::uint8_t, 8> enciphered;
        std::string printed;
    };
    std::array<std::uint8_t, 8> other = kEnciphered;
    other[7] ^= 1;
    const std::vector<Row> rows = {
        {"a good vector", kZeros, kEnciphered, ""},
        {"another result", kZeros, other, "wrong\nfailed\n"},
        {"another plain text", kEnciphered, kEnciphered, "wrong\nfailed\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        testing::internal::CaptureStdout();
        cipher_CheckBlowfish({kKey, row.plain, row.enciphered, "wrong\n", "failed\n"});
        EXPECT_EQ(testing::internal::GetCapturedStdout(), row.printed);
    }
}

}  // namespace
