#!/usr/bin/env python3
"""Writes a model of regular blocks over the box of a mesh: make_lattice.py OUT.omf MESH.obj BLOCKS

As OMF 1, without any values; the lattice is that of match_blocks.
"""

import sys

from make_omf import HEADER_BYTES, Writer


def box_of(name):
    lower, upper = [float("inf")] * 3, [float("-inf")] * 3
    with open(name, encoding="ascii") as file:
        for line in file:
            if line.startswith("v "):
                place = list(map(float, line.split()[1:4]))
                lower, upper = list(map(min, lower, place)), list(map(max, upper, place))
    return lower, upper


def main():
    out, mesh, blocks = sys.argv[1], sys.argv[2], float(sys.argv[3])
    count = round(blocks ** (1 / 3))
    lower, upper = box_of(mesh)
    with open(out, "wb") as file:
        file.write(bytes(HEADER_BYTES))
        writer = Writer(file)
        steps = [(most - least + 2) / count for least, most in zip(lower, upper)]
        tensors = {f"tensor_{axis}": [step] * count for axis, step in zip("uvw", steps)}
        geometry = writer.add("VolumeGridGeometry", origin=[least - 1 for least in lower],
                              axis_u=[1, 0, 0], axis_v=[0, 1, 0], axis_w=[0, 0, 1], **tensors)
        volume = writer.add("VolumeElement", name="model", description="", geometry=geometry,
                            data=[], color=[200, 200, 200], subtype="volume")
        project = writer.add("Project", name="Benchmark", description="", author="", revision="",
                             units="m", date="2026-01-01T00:00:00Z", origin=[0, 0, 0],
                             elements=[volume])
        writer.finish(project)


if __name__ == "__main__":
    main()
