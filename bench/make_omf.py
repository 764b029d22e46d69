#!/usr/bin/env python3
"""Writes an OMF 1 file with one volume of several columns: make_omf.py OUT.omf COLUMNS

10 million cells, 250 x 200 x 200; each column is 80 MB when it is decoded.
"""

import json
import struct
import sys
import uuid
import zlib

import numpy as np

COUNTS = (250, 200, 200)
HEADER_BYTES = 60


class Writer:
    def __init__(self, file):
        self._file = file
        self._objects = {}

    def add(self, class_name, **fields):
        # Made from a count, so that the same call gives the same file.
        key = uuid.UUID(int=len(self._objects) + 1)
        self._objects[str(key)] = {"__class__": class_name, **fields}
        return str(key)

    def add_doubles(self, values):
        start = self._file.tell()
        self._file.write(zlib.compress(values.astype("<f8").tobytes(), 1))
        blob = {"start": start, "length": self._file.tell() - start, "dtype": "<f8"}
        return self.add("ScalarArray", array=blob)

    def finish(self, project):
        json_start = self._file.tell()
        self._file.write(json.dumps(self._objects).encode())
        self._file.seek(0)
        self._file.write(struct.pack("<4s32s16sQ", b"\x84\x83\x82\x81", b"OMF-v0.9.0",
                                     uuid.UUID(project).bytes, json_start))


def main():
    out, columns = sys.argv[1], int(sys.argv[2])
    cells = COUNTS[0] * COUNTS[1] * COUNTS[2]
    random = np.random.default_rng(2)
    with open(out, "wb") as file:
        file.write(bytes(HEADER_BYTES))
        writer = Writer(file)
        data = []
        for column in range(columns):
            values = random.lognormal(0, 1, cells).round(2)
            data.append(writer.add("ScalarData", name=f"grade_{column}", description="",
                                   location="cells", array=writer.add_doubles(values)))
        tensors = {f"tensor_{axis}": [size] * count
                   for axis, size, count in zip("uvw", (10.0, 10.0, 5.0), COUNTS)}
        geometry = writer.add("VolumeGridGeometry", origin=[500_000.0, 7_000_000.0, 100.0],
                              axis_u=[1, 0, 0], axis_v=[0, 1, 0], axis_w=[0, 0, 1], **tensors)
        volume = writer.add("VolumeElement", name="model", description="", geometry=geometry,
                            data=data, color=[200, 200, 200], subtype="volume")
        project = writer.add("Project", name="Benchmark", description="", author="", revision="",
                             units="m", date="2026-01-01T00:00:00Z", origin=[0, 0, 0],
                             elements=[volume])
        writer.finish(project)


if __name__ == "__main__":
    main()
