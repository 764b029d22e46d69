// The self-test of the block cipher, before a library that can be told to go wrong. What
// the ciphers make of a file is tested by samples that other programs made, in
// variant_file_test.cpp.
#include "support/ciphers.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <nettle/blowfish.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "tests/support/child_process.h"

namespace {

bool encrypts_wrong = false;
bool decrypts_wrong = false;

using Crypt = void (*)(const blowfish_ctx*, std::size_t, std::uint8_t*, const std::uint8_t*);

void crypt(const char* name, bool is_wrong, const blowfish_ctx* context, std::size_t length,
           std::uint8_t* to, const std::uint8_t* from) {
    const auto real = reinterpret_cast<Crypt>(::dlsym(RTLD_NEXT, name));
    ASSERT_NE(real, nullptr) << name;
    real(context, length, to, from);
    if (is_wrong && length != 0) to[length - 1] ^= 1;
}

}  // namespace

// The header makes these the names that the library has.
extern "C" void blowfish_encrypt(const blowfish_ctx* context, std::size_t length, std::uint8_t* to,
                                 const std::uint8_t* from) {
    crypt("nettle_blowfish_encrypt", encrypts_wrong, context, length, to, from);
}

extern "C" void blowfish_decrypt(const blowfish_ctx* context, std::size_t length, std::uint8_t* to,
                                 const std::uint8_t* from) {
    crypt("nettle_blowfish_decrypt", decrypts_wrong, context, length, to, from);
}

namespace {

using Block = std::array<std::uint8_t, 8>;

constexpr Block kKey{};
constexpr Block kZeros{};
// Eric Young's first vector: zeros under a key of zeros.
constexpr Block kEnciphered = {0x4e, 0xf9, 0x97, 0x45, 0x61, 0x98, 0xdd, 0x78};

TEST(CipherCheck, PrintsWhatIsWrongAndGoesOn) {
    struct Row {
        const char* name;
        Block plain;
        Block enciphered;
        std::string printed;
    };
    Block other = kEnciphered;
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

using Use = void (*)(std::span<std::uint8_t>);

/// What the first use of the cipher in a process prints, and a later one, and whether a
/// result comes of it all the same.
std::string printed_by(Use first, bool is_wrong_encrypting, bool is_wrong_decrypting) {
    return zol::testing::in_child([&] {
        encrypts_wrong = is_wrong_encrypting;
        decrypts_wrong = is_wrong_decrypting;
        Block block{};
        testing::internal::CaptureStdout();
        first(block);
        std::string text = testing::internal::GetCapturedStdout();
        if (block == Block{}) text += "and gave nothing\n";
        testing::internal::CaptureStdout();
        cipher_EncipherBlowfish(block);
        cipher_DecipherBlowfish(block);
        const std::string again = testing::internal::GetCapturedStdout();
        return again.empty() ? text : text + "and again:\n" + again;
    });
}

TEST(CipherCheck, IsMadeByBothVectorsWithTheFirstKeyOfAProcess) {
    struct Row {
        const char* name;
        bool encrypts_wrong;
        bool decrypts_wrong;
        std::string printed;
    };
    const std::vector<Row> rows = {
        {"a good library", false, false, ""},
        {"enciphering goes wrong", true, false,
         "wrong blowfish encryption\nwrong blowfish encryption (3)\n"},
        {"deciphering goes wrong", false, true, "blowfish failed\nblowfish failed (3)\n"},
        {"both go wrong", true, true,
         "wrong blowfish encryption\nblowfish failed\n"
         "wrong blowfish encryption (3)\nblowfish failed (3)\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (const Use first : {cipher_EncipherBlowfish, cipher_DecipherBlowfish}) {
            EXPECT_EQ(printed_by(first, row.encrypts_wrong, row.decrypts_wrong), row.printed);
        }
    }
}

}  // namespace
