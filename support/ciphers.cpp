#include "support/ciphers.h"

#include <nettle/aes.h>
#include <nettle/blowfish.h>
#include <nettle/cbc.h>

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::array<std::uint8_t, 12> kBlowfishKey = {0x5a, 0x17, 0xc2, 0xe9, 0x30, 0x4b,
                                                       0xd8, 0x76, 0xa1, 0xf3, 0x62, 0x0e};

constexpr char kAesKey[] = "Tqk7!=861m3^zd)rxnj4+92%#~[6P8FS";
static_assert(sizeof kAesKey == AES256_KEY_SIZE + 1);

constexpr std::array<std::uint8_t, 26> kLetters = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i',
                                                   'j', 'k', 'l', 'm', 'n', 'o', 'p', 'q', 'r',
                                                   's', 't', 'u', 'v', 'w', 'x', 'y', 'z'};
constexpr std::array<std::uint8_t, 8> kCountdown = {0xfe, 0xdc, 0xba, 0x98, 0x76, 0x54, 0x32, 0x10};

// The second is one of the 34 that Eric Young published for the algorithm:
// https://www.schneier.com/code/vectors.txt
constexpr BlowfishVector kPublished[] = {
    {kLetters,
     {'B', 'L', 'O', 'W', 'F', 'I', 'S', 'H'},
     {0x32, 0x4e, 0xd0, 0xfe, 0xf4, 0x13, 0xa2, 0x03},
     "wrong blowfish encryption\n",
     "blowfish failed\n"},
    {kCountdown,
     {0x01, 0x23, 0x45, 0x67, 0x89, 0xab, 0xcd, 0xef},
     {0x0a, 0xce, 0xab, 0x0f, 0xc6, 0xa0, 0xa2, 0x8d},
     "wrong blowfish encryption (3)\n",
     "blowfish failed (3)\n"},
};

blowfish_ctx with_key(std::span<const std::uint8_t> key) {
    blowfish_ctx context;
    blowfish_set_key(&context, key.size(), key.data());
    return context;
}

blowfish_ctx with_our_key() {
    [[maybe_unused]] static const bool kIsChecked = [] {
        for (const BlowfishVector& vector : kPublished) cipher_CheckBlowfish(vector);
        return true;
    }();
    return with_key(kBlowfishKey);
}

std::size_t whole_blocks(std::size_t size, std::size_t block) {
    return size - size % block;
}

}  // namespace

void cipher_CheckBlowfish(const BlowfishVector& vector) {
    const blowfish_ctx context = with_key(vector.key);
    std::array<std::uint8_t, kBlowfishBlock> block{};
    blowfish_encrypt(&context, block.size(), block.data(), vector.plain.data());
    if (block != vector.enciphered) std::fputs(vector.wrong, stdout);
    blowfish_decrypt(&context, block.size(), block.data(), vector.enciphered.data());
    if (block != vector.plain) std::fputs(vector.failed, stdout);
}

void cipher_EncipherBlowfish(std::span<std::uint8_t> bytes) {
    const blowfish_ctx context = with_our_key();
    blowfish_encrypt(&context, whole_blocks(bytes.size(), kBlowfishBlock), bytes.data(),
                     bytes.data());
}

void cipher_DecipherBlowfish(std::span<std::uint8_t> bytes) {
    const blowfish_ctx context = with_our_key();
    blowfish_decrypt(&context, whole_blocks(bytes.size(), kBlowfishBlock), bytes.data(),
                     bytes.data());
}

void cipher_DecipherAes(std::span<std::uint8_t> bytes) {
    aes256_ctx context;
    std::array<std::uint8_t, AES256_KEY_SIZE> key{};
    std::copy_n(kAesKey, key.size(), key.begin());
    aes256_set_decrypt_key(&context, key.data());
    std::array<std::uint8_t, kAesBlock> previous{};
    const auto decrypt = [](const void* with, std::size_t length, std::uint8_t* to,
                            const std::uint8_t* from) {
        aes256_decrypt(static_cast<const aes256_ctx*>(with), length, to, from);
    };
    cbc_decrypt(&context, decrypt, kAesBlock, previous.data(),
                whole_blocks(bytes.size(), kAesBlock), bytes.data(), bytes.data());
}
