// The two ciphers of sealed value files, over nettle, with the keys those files have.
// They keep a value from casual eyes and no more: the keys are in every copy of this
// library.
//
// May be called from several threads.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

constexpr std::size_t kBlowfishBlock = 8;
constexpr std::size_t kAesBlock = 16;

/// Blowfish, each block for itself, in place. Bytes behind the last whole block stay.
/// The first call in a process checks the cipher by published vectors first.
void cipher_EncipherBlowfish(std::span<std::uint8_t> bytes);
void cipher_DecipherBlowfish(std::span<std::uint8_t> bytes);

/// AES with 256 bits of key, blocks chained from a first block of zeros, in place. Bytes
/// behind the last whole block stay. There is no enciphering half: nothing writes this.
void cipher_DecipherAes(std::span<std::uint8_t> bytes);

/// A key, a block, and what the one makes of the other.
struct BlowfishVector {
    std::span<const std::uint8_t> key;
    std::array<std::uint8_t, kBlowfishBlock> plain;
    std::array<std::uint8_t, kBlowfishBlock> enciphered;
    /// What is printed when enciphering goes wrong, and when deciphering does.
    const char* wrong;
    const char* failed;
};

/// Prints to the standard output what is wrong, and nothing when nothing is.
void cipher_CheckBlowfish(const BlowfishVector& vector);
