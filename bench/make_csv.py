#!/usr/bin/env python3
"""Writes a block model as delimited text: make_csv.py OUT.csv ROWS

Twelve columns as resource models have them, in a lattice of 10 x 10 x 5 m far from the
origin; the same rows give the same file every time.
"""

import sys

import numpy as np

HEADER = "xc,yc,zc,au,ag,cu,density,recovery,class,lith,pit,value"
LITHOLOGIES = np.array(["OX", "FRESH", "TRANS", "WASTE", "SAP"])
ROWS_ON_X, ROWS_ON_Y = 250, 200
CHUNK = 100_000


def chunk(first, count, random):
    block = np.arange(first, first + count)
    x = block % ROWS_ON_X * 10 + 500_005
    y = block // ROWS_ON_X % ROWS_ON_Y * 10 + 7_000_005
    z = block // (ROWS_ON_X * ROWS_ON_Y) * 5 + 102.5
    return zip(
        x.tolist(), y.tolist(), z.tolist(),
        random.lognormal(0, 1, count).round(4).tolist(),
        random.lognormal(2, 1, count).round(3).tolist(),
        random.random(count).round(5).tolist(),
        (2.5 + random.random(count) * 0.5).round(3).tolist(),
        random.random(count).round(6).tolist(),
        random.integers(1, 4, count).tolist(),
        LITHOLOGIES[random.integers(0, 5, count)].tolist(),
        random.integers(0, 12, count).tolist(),
        random.normal(0, 1e4, count).round(2).tolist())


def main():
    out, rows = sys.argv[1], int(sys.argv[2])
    random = np.random.default_rng(1)
    with open(out, "w", encoding="ascii") as file:
        file.write(HEADER + "\n")
        for first in range(0, rows, CHUNK):
            count = min(CHUNK, rows - first)
            file.writelines(",".join(map(str, row)) + "\n" for row in chunk(first, count, random))


if __name__ == "__main__":
    main()
