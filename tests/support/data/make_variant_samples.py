#!/usr/bin/env python3
"""Makes the samples of the binary variant forms, with nothing of the library under test.

The records are put together by `struct`. Blowfish is written out below, its tables taken
from the digits of pi as its author defined them; AES is the openssl command's. Run it in
this folder; the samples are the same every time.
"""

import struct
import subprocess
from pathlib import Path

BLOWFISH_KEY = bytes.fromhex("5a17c2e9304bd876a1f3620e")
AES_KEY = b"Tqk7!=861m3^zd)rxnj4+92%#~[6P8FS"
MASK = 0xFFFFFFFF

EMPTY, DOUBLE, STRING, INT, VECTOR, MAP, POINTER, INT64 = range(8)


def record(kind, body=b""):
    return struct.pack("<BI", kind, 5 + len(body)) + body


def entry(key, value):
    return struct.pack("<I", 4 + len(key)) + key + value


def header(type_name, mark=1):
    return struct.pack("<10s11s11s44sII", b"ZELMAR001", b"", type_name, b"", mark, 84)


def pi_words(count):
    """The first 32-bit words of the fraction of pi, by Machin's formula."""
    bits = 32 * count + 64

    def arctan_of_inverse(x):
        total = term = (1 << bits) // x
        divisor, sign = 1, 1
        while term:
            term //= x * x
            divisor, sign = divisor + 2, -sign
            total += sign * (term // divisor)
        return total

    pi = 4 * (4 * arctan_of_inverse(5) - arctan_of_inverse(239))
    fraction = (pi - (3 << bits)) >> 64
    return [fraction >> 32 * (count - 1 - i) & MASK for i in range(count)]


class Blowfish:
    def __init__(self, key):
        words = pi_words(18 + 4 * 256)
        self.p = words[:18]
        self.s = [words[18 + 256 * i:18 + 256 * (i + 1)] for i in range(4)]
        repeated = key * (72 // len(key) + 1)
        self.p = [p ^ k for p, k in zip(self.p, struct.unpack(">18I", repeated[:72]))]
        left = right = 0
        for table in [self.p, *self.s]:
            for i in range(0, len(table), 2):
                left, right = self.encipher(left, right)
                table[i:i + 2] = left, right

    def encipher(self, left, right):
        for key in self.p[:16]:
            left ^= key
            a, b, c, d = left >> 24, left >> 16 & 255, left >> 8 & 255, left & 255
            right ^= (((self.s[0][a] + self.s[1][b] & MASK) ^ self.s[2][c]) + self.s[3][d]) & MASK
            left, right = right, left
        return right ^ self.p[17], left ^ self.p[16]

    def __call__(self, plain):
        halves = struct.iter_unpack(">II", plain)
        return b"".join(struct.pack(">II", *self.encipher(*pair)) for pair in halves)


def padded(plain, block):
    return plain + bytes(-len(plain) % block)


def aes(plain):
    command = ["openssl", "enc", "-aes-256-cbc", "-nopad", "-K", AES_KEY.hex(), "-iv", "0" * 32]
    return subprocess.run(command, input=plain, stdout=subprocess.PIPE, check=True).stdout


def check_blowfish():
    """Eric Young's published vectors, and the one with the key of letters."""
    for key, plain, expected in [
            (b"abcdefghijklmnopqrstuvwxyz", b"BLOWFISH", "324ed0fef413a203"),
            (bytes(8), bytes(8), "4ef997456198dd78"),
            (bytes.fromhex("fedcba9876543210"), bytes.fromhex("0123456789abcdef"),
             "0aceab0fc6a0a28d")]:
        found = Blowfish(key)(plain).hex()
        assert found == expected, (key, found)


# One value of each kind, nested; the map has one key, since a map's order is the table's.
EVERY_KIND = record(VECTOR, b"".join([
    record(EMPTY),
    record(DOUBLE, struct.pack("<d", 0.1)),
    record(STRING, "Erz \u00e4: 2.5 g/t\n".encode()),
    record(INT, struct.pack("<i", -5)),
    record(VECTOR, record(STRING, b"x") + record(VECTOR)),
    record(MAP, entry(b"density", record(MAP, entry(b"", record(INT, struct.pack("<i", 1)))))),
    record(POINTER, struct.pack("<Q", 0xFEDCBA9876543210)),
    record(INT64, struct.pack("<q", -(2**40) - 1)),
]))


def main():
    check_blowfish()
    blowfish = Blowfish(BLOWFISH_KEY)
    for name, content in [
            ("every_kind_clear.mvar", header(b"MVAR") + EVERY_KIND),
            ("every_kind_sealed.mvar", header(b"EMVAR") + blowfish(padded(EVERY_KIND, 8))),
            ("every_kind_sealed_aes.mvar", header(b"EMVAR") + aes(padded(EVERY_KIND, 16)))]:
        Path(name).write_bytes(content)


if __name__ == "__main__":
    main()
