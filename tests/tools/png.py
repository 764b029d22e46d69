"""Reads back the pictures that the tool writes: PNG of 8-bit colours, not interlaced."""

import struct
import zlib


def chunks(data):
    assert data[:8] == b"\x89PNG\r\n\x1a\n", data[:8]
    at = 8
    while at < len(data):
        length, = struct.unpack_from(">I", data, at)
        kind, body = data[at + 4:at + 8], data[at + 8:at + 8 + length]
        check, = struct.unpack_from(">I", data, at + 8 + length)
        assert check == zlib.crc32(kind + body), kind
        yield kind, body
        at += 12 + length


def paeth(a, b, c):
    near = min((abs(b - c), 0, a), (abs(a - c), 1, b), (abs(a + b - 2 * c), 2, c))
    return near[2]


class Picture:
    def __init__(self, file):
        parts = list(chunks(file.read_bytes()))
        head = next(body for kind, body in parts if kind == b"IHDR")
        self.width, self.height, depth, colours, _, _, interlaced = struct.unpack(">IIBBBBB", head)
        assert depth == 8 and colours in (2, 6) and interlaced == 0, head
        self.bytes_each = 3 if colours == 2 else 4
        raw = zlib.decompress(b"".join(body for kind, body in parts if kind == b"IDAT"))
        self.rows = self.unfiltered(raw)

    def unfiltered(self, raw):
        each, length = self.bytes_each, self.width * self.bytes_each
        rows, above = [], bytes(length)
        for start in range(0, len(raw), length + 1):
            kind, row = raw[start], bytearray(raw[start + 1:start + 1 + length])
            if kind == 2:
                row = bytearray((x + b) & 255 for x, b in zip(row, above))
            elif kind:
                for i in range(length):
                    a = row[i - each] if i >= each else 0
                    c = above[i - each] if i >= each else 0
                    b = above[i]
                    row[i] = (row[i] + (0, a, b, (a + b) // 2, paeth(a, b, c))[kind]) & 255
            rows.append(bytes(row))
            above = row
        assert len(rows) == self.height
        return rows

    def at(self, x, y):
        """Red, green and blue of a pixel, counted from the upper left."""
        start = x * self.bytes_each
        return tuple(self.rows[y][start:start + 3])

    def colours(self):
        return {self.at(x, y) for y in range(self.height) for x in range(self.width)}
