#!/usr/bin/env python3
"""Writes a drawing of a mine: make_dxf.py OUT.dxf MEGABYTES|layers|points

Strings of benches as polylines in space and in the plan, survey marks and their texts, and
blocks, on forty layers at the coordinates of a survey, with extended data on some. "layers" is
a drawing of 10,000 layers and nothing else, "points" one of a polyline of a million points.
The same arguments give the same file every time.
"""

import math
import random
import sys

LAYERS = [f"PIT_{pit}_{kind}" for pit in range(1, 11)
          for kind in ("CREST", "TOE", "RAMP", "SURVEY")]
SUBCLASSES = {
    "POLYLINE": ["AcDb3dPolyline"], "VERTEX": ["AcDbVertex", "AcDb3dPolylineVertex"],
    "LWPOLYLINE": ["AcDbPolyline"], "POINT": ["AcDbPoint"], "TEXT": ["AcDbText"],
    "INSERT": ["AcDbBlockReference"]}
TEN_THOUSAND = 10_000
MILLION = 1_000_000


def tags(*pairs):
    return "".join(f"{code:>3}\n{value}\n" for code, value in pairs)


def head(layers):
    return (tags((0, "SECTION"), (2, "HEADER"), (9, "$ACADVER"), (1, "AC1015"), (0, "ENDSEC"),
                 (0, "SECTION"), (2, "TABLES"), (0, "TABLE"), (2, "LAYER"), (70, len(layers)))
            + "".join(tags((0, "LAYER"), (2, layer), (70, 0), (62, 1 + i % 255), (6, "CONTINUOUS"))
                      for i, layer in enumerate(layers))
            + tags((0, "ENDTAB"), (0, "ENDSEC"), (0, "SECTION"), (2, "BLOCKS"),
                   (0, "BLOCK"), (8, "0"), (2, "COLLAR"), (70, 0), (10, 0.0), (20, 0.0), (30, 0.0))
            + tags((0, "LINE"), (8, "0"), (10, -1.0), (20, 0.0), (30, 0.0),
                   (11, 1.0), (21, 0.0), (31, 0.0), (0, "ENDBLK"), (8, "0"), (0, "ENDSEC"),
                   (0, "SECTION"), (2, "ENTITIES")))


class Mine:
    def __init__(self):
        self.random = random.Random(1)
        self.handle = 0x100

    def begin(self, kind, layer, *pairs):
        self.handle += 1
        return tags((0, kind), (5, f"{self.handle:X}"), (100, "AcDbEntity"), (8, layer),
                    *((100, word) for word in SUBCLASSES.get(kind, ())), *pairs)

    def string(self, count):
        """Points of a bench: a ring with the roughness of a survey."""
        x = 500_000 + self.random.uniform(0, 20_000)
        y = 7_000_000 + self.random.uniform(0, 20_000)
        z = self.random.uniform(0, 900)
        for i in range(count):
            angle = 2 * math.pi * i / count
            radius = 200 + self.random.uniform(-3, 3)
            yield (round(x + radius * math.cos(angle), 3), round(y + radius * math.sin(angle), 3),
                   round(z + self.random.uniform(-0.5, 0.5), 3))

    def in_space(self, layer):
        parts = [self.begin("POLYLINE", layer, (66, 1), (10, 0.0), (20, 0.0), (30, 0.0), (70, 9)),
                 tags((1001, "MINE"), (1000, f"NAME=bench {self.handle:X}"), (1040, 12.5))]
        for x, y, z in self.string(self.random.randint(40, 200)):
            parts.append(self.begin("VERTEX", layer, (10, x), (20, y), (30, z), (70, 32)))
        parts.append(self.begin("SEQEND", layer))
        return "".join(parts)

    def in_plan(self, layer):
        points = list(self.string(self.random.randint(40, 400)))
        return (self.begin("LWPOLYLINE", layer, (90, len(points)), (70, 1), (38, points[0][2]))
                + "".join(tags((10, x), (20, y)) for x, y, _ in points))

    def mark(self, layer):
        (x, y, z), = self.string(1)
        return (self.begin("POINT", layer, (10, x), (20, y), (30, z))
                + self.begin("TEXT", layer, (10, x), (20, y), (30, z), (40, 2.5), (1, f"RL {z}"))
                + self.begin("INSERT", layer, (2, "COLLAR"), (10, x), (20, y), (30, z)))

    def some(self):
        layer = self.random.choice(LAYERS)
        kind = self.random.random()
        if kind < 0.25:
            return self.in_space(layer)
        return self.in_plan(layer) if kind < 0.45 else self.mark(layer)


def content(what, mine):
    if what == "layers":
        return
    if what == "points":
        yield mine.begin("LWPOLYLINE", "PIT_1_CREST", (90, MILLION), (70, 0), (38, 100.0))
        for x, y, _ in mine.string(MILLION):
            yield tags((10, x), (20, y))
        return
    left = float(what) * 1e6
    while left > 0:
        text = mine.some()
        left -= len(text)
        yield text


def main():
    out, what = sys.argv[1:3]
    layers = LAYERS
    if what == "layers":
        layers = [f"BENCH_{i}_{('CREST', 'TOE', 'RAMP CENTRELINE')[i % 3]}"
                  for i in range(TEN_THOUSAND)]
    with open(out, "w", encoding="ascii") as file:
        file.write(head(layers))
        file.writelines(content(what, Mine()))
        file.write(tags((0, "ENDSEC"), (0, "EOF")))


if __name__ == "__main__":
    main()
