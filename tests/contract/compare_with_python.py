#!/usr/bin/env python3
"""Holds what the library says of each sample against what Python itself reads from it.

  compare_with_python.py <libzolExportedApi_ReadOnly.so> <samples folder>

The whole catalogue is compared, and every value of every block: numbers exactly (Python's
float() is correctly rounded), boxes to within a billionth, since the same lattice may be
added up in more than one order.
"""

import itertools
import math
import sys
from dataclasses import dataclass, field
from pathlib import Path

from flat_library import Library
from independent_reader import (Omf1, Variable, as_float, as_stated, boxes_around, guessed,
                                lattice_boxes, read_csv, read_geoeas, sidecar_of)

BOX_TOLERANCE = 1e-9
PREDEFINED = ["centroid_x", "centroid_y", "centroid_z", "size_x", "size_y", "size_z", "volume",
              "block_index"]
MOST_DIFFERENCES_SHOWN = 5


@dataclass
class Expected:
    """A model in model coordinates; `origin` is where they start in the world."""
    variables: list
    boxes: list
    counts: tuple
    parent_size: tuple
    origin: tuple = (0.0, 0.0, 0.0)
    # Unless stated, that of the parents: from the lower corner of the lattice to its upper one.
    extent: tuple = ()
    # Counts of the sub-block lattice, where there is one.
    sub_counts: tuple = ()

    def __post_init__(self):
        self.parent_extent = (0.0, 0.0, 0.0) + tuple(
            n * s for n, s in zip(self.counts, self.parent_size))
        self.extent = self.extent or self.parent_extent


def in_model(boxes, origin):
    return [tuple(each - start for each, start in zip(box, origin * 2)) for box in boxes]


def estimate_regular(path):
    table = read_csv(path)
    size = (5.0, 5.0, 5.0)
    origin = (0.0, 0.0, 25.0)
    centroids = list(zip(*(table.floats(name) for name in ("XC", "YC", "ZC"))))
    names = [name for name in table.header if name not in ("XC", "YC", "ZC")]
    return Expected([guessed(name, table.cells(name)) for name in names],
                    in_model(boxes_around(centroids, itertools.repeat(size)), origin),
                    (36, 40, 12), size, origin)


def unit_index_table(path, axes, base, counts, names):
    """A table whose coordinates are whole numbers: block n of an axis spans n - base onwards."""
    table = read_csv(path)
    lower = list(zip(*(table.floats(axis) if axis else [float(base)] * len(table.rows)
                       for axis in axes)))
    boxes = [tuple(each - base for each in corner) + tuple(each - base + 1 for each in corner)
             for corner in lower]
    return Expected([guessed(name, table.cells(name)) for name in names], boxes, counts,
                    (1.0, 1.0, 1.0))


def pit_index_coords(path):
    return unit_index_table(path, ("X", "Y", "Z"), 0, (20, 20, 15), ["Value", "Grade", "Rock_Type"])


def walker_exhaustive(path):
    return unit_index_table(path, ("X", "Y", None), 1, (260, 300, 1), ["U", "V"])


def gslib_lattice(path):
    table, facts = read_geoeas(path)
    counts = tuple(int(number) for number in facts[0:3])
    size = tuple(facts[6:9])
    origin = tuple(centroid - length / 2 for centroid, length in zip(facts[3:6], size))
    return Expected([guessed(name, table.cells(name)) for name in table.header],
                    lattice_boxes(counts, size), counts, size, origin)


def gslib_points(path):
    table, _ = read_geoeas(path)
    size = (1.0, 1.0, 1.0)
    centroids = list(zip(*(table.floats(axis) for axis in "xyz")))
    names = [name for name in table.header if name not in ("x", "y", "z")]
    return Expected([guessed(name, table.cells(name)) for name in names],
                    boxes_around(centroids, itertools.repeat(size)), (10, 10, 10), size)


def values_only(path):
    cells = path.read_text().split()
    fields, lattice = sidecar_of(path)
    counts, size = tuple(lattice["count"]), tuple(map(float, lattice["parentSize"]))
    value = Variable("value", "integer", [float(cell) for cell in cells],
                     description=fields["value"]["description"])
    return Expected([value], lattice_boxes(counts, size), counts, size)


ROLE_COLUMNS = ["centroid_x", "centroid_y", "centroid_z", "dim_x", "dim_y", "dim_z"]


def sub_block_boxes(table, decimal="."):
    columns = [[float(cell.replace(decimal, ".")) for cell in table.cells(name)]
               for name in ROLE_COLUMNS]
    return boxes_around(list(zip(*columns[:3])), list(zip(*columns[3:])))


def subblocked_with_sidecar(path, delimiter, decimal):
    table = read_csv(path, delimiter)
    fields, _ = sidecar_of(path)
    variables = [as_stated(name, table.cells(name), fields[name])
                 for name in table.header if name not in ROLE_COLUMNS]
    return Expected(variables, sub_block_boxes(table, decimal), (18, 20, 20), (10.0, 10.0, 5.0),
                    sub_counts=(36, 40, 20))


def subblocked_tab(path):
    table = read_csv(path, "\t", comment="#")
    origin = (0.0, 0.0, 25.0)
    names = [name for name in table.header if name not in ROLE_COLUMNS]
    return Expected([guessed(name, table.cells(name)) for name in names],
                    in_model(sub_block_boxes(table), origin), (7, 18, 2), (10.0, 10.0, 5.0),
                    # The last row of parents is half filled.
                    origin, extent=(0.0, 0.0, 0.0, 70.0, 175.0, 10.0))


def omf1_volume(path):
    file = Omf1(path)
    (volume,) = file.of_class("VolumeElement")
    geometry = file[volume["geometry"]]
    widths = [geometry["tensor_" + axis] for axis in "uvw"]
    counts = tuple(len(each) for each in widths)
    size = tuple(each[0] for each in widths)
    variables = [Variable(file[key]["name"], "double", file.doubles(file[key]["array"]),
                          description=file[key]["description"]) for key in volume["data"]]
    return Expected(variables, lattice_boxes(counts, size), counts, size,
                    tuple(geometry["origin"]))


SAMPLES = {
    "blocks/estimate_regular.csv": estimate_regular,
    "blocks/pit_index_coords.csv": pit_index_coords,
    "blocks/walker_exhaustive.csv": walker_exhaustive,
    "blocks/gslib_grid_40x40x40.out": gslib_lattice,
    "blocks/gslib_kriging_50x50.out": gslib_lattice,
    "blocks/gslib_points_estimate.out": gslib_points,
    "blocks/values_only_section.dat": values_only,
    "blocks/made_subblocked.csv": lambda path: subblocked_with_sidecar(path, ",", "."),
    "blocks/made_subblocked_semicolon_decimal_comma.csv":
        lambda path: subblocked_with_sidecar(path, ";", ","),
    "blocks/made_subblocked_tab.txt": subblocked_tab,
    "omf/test_file.omf": omf1_volume,
}


@dataclass
class Comparison:
    """Counts what was compared and keeps what differs."""
    compared: int = 0
    differences: list = field(default_factory=list)

    def equal(self, what, ours, expected):
        self.compared += 1
        same = ours == expected or (isinstance(ours, float) and isinstance(expected, float)
                                    and math.isnan(ours) and math.isnan(expected))
        if not same:
            self.differences.append(f"{what}: {ours!r}, expected {expected!r}")

    def close(self, what, ours, expected):
        self.compared += 1
        if len(ours) != len(expected) or any(
                not abs(a - b) <= BOX_TOLERANCE for a, b in zip(ours, expected)):
            self.differences.append(f"{what}: {list(ours)}, expected {list(expected)}")


def compare_geometry(seen, model, expected):
    seen.equal("blocks", model.count("NBlocks"), len(expected.boxes))
    seen.equal("stratigraphic", model.count("IsStratigraphicModel"), 0)
    seen.close("origin", model.origin(), expected.origin)
    seen.close("orientation", model.orientation(), (0.0, 0.0, 0.0))
    seen.close("extent", model.extent(), expected.extent)
    seen.equal("schemas", model.count("NSchemas"), 2 if expected.sub_counts else 1)
    seen.close("parents", model.schema("Dimensions", 0, 3), expected.counts)
    seen.close("parent extent", model.schema("Extent", 0, 6), expected.parent_extent)
    seen.close("parent sizes", model.schema("Sizes", 0, 6), expected.parent_size * 2)
    if expected.sub_counts:
        seen.close("sub-blocks", model.schema("Dimensions", 1, 3), expected.sub_counts)


def compare_catalogue(seen, model, expected):
    variables = expected.variables
    seen.equal("variables", model.names(""), [each.name for each in variables])
    seen.equal("predefined", model.names("Predefined"), PREDEFINED)
    seen.equal("numeric", model.names("Numeric"),
               [each.name for each in variables if not each.is_text])
    seen.equal("string", model.names("String"), [each.name for each in variables if each.is_text])
    seen.equal("classifications", model.names("Classification"),
               [each.name for each in variables if each.translations])
    for each in variables:
        seen.equal(f"type of {each.name}", model.type_name(each.name), each.type_name)
        seen.equal(f"description of {each.name}", model.description(each.name), each.description)
        seen.equal(f"translations of {each.name}", model.translations(each.name),
                   each.translations)
        seen.equal(f"default of {each.name}", model.default_number(each.name),
                   each.default_number)
        if each.texts is not None:
            seen.equal(f"default text of {each.name}", model.default_string(each.name),
                       each.default_text)


def predefined_values(block, box):
    """The computed variables of a block, in the order of PREDEFINED."""
    centroid = [(low + high) / 2 for low, high in zip(box[:3], box[3:])]
    size = [high - low for low, high in zip(box[:3], box[3:])]
    return [*centroid, *size, math.prod(size), float(block)]


def compare_blocks(seen, model, expected):
    positions = 0
    for block, position in enumerate(model.walk()):
        positions += 1
        seen.equal("position", position, block)
        if block >= len(expected.boxes):
            break
        box = expected.boxes[block]
        seen.close(f"box of block {block}", model.block_extent(), box)
        seen.close(f"predefined variables of block {block}",
                   [model.number(name) for name in PREDEFINED], predefined_values(block, box))
        for each in expected.variables:
            place = f"{each.name} of block {block}"
            seen.equal(place, model.number(each.name), each.numbers[block])
            text = model.string(each.name)
            if each.texts is not None:
                seen.equal("text of " + place, text, each.texts[block])
            elif math.isnan(each.numbers[block]):
                seen.equal("text of " + place, text, "")
            else:
                # The shortest text among floats, for a variable stored as one.
                number = as_float(float(text)) if each.type_name == "float" else float(text)
                seen.equal("text of " + place, number, each.numbers[block])
    seen.equal("blocks walked", positions, len(expected.boxes))


def compare_searches(seen, model, expected):
    first_at = {}
    for block, box in enumerate(expected.boxes):
        first_at.setdefault(box, block)
    for box, block in first_at.items():
        centroid = predefined_values(block, box)[:3]
        seen.equal(f"search for block {block}", model.position_at(centroid), block)
        world = [each + start for each, start in zip(centroid, expected.origin)]
        seen.equal(f"search in the world for block {block}", model.position_at_world(world), block)
    below = [low - 1.0 for low in expected.extent[:3]]
    seen.equal("search below the model", model.position_at(below), None)


def main():
    library_path, samples = sys.argv[1], Path(sys.argv[2])
    library = Library(library_path)
    failed = 0
    for name, read in SAMPLES.items():
        expected = read(samples / name)
        seen = Comparison()
        try:
            model = library.open(samples / name)
            for compare in (compare_geometry, compare_catalogue, compare_blocks, compare_searches):
                compare(seen, model, expected)
            model.close()
        except Exception as fault:  # One sample's fault must not hide the next one's.
            seen.differences.append(f"{type(fault).__name__}: {fault}")
        print(f"{name}: {seen.compared} answers compared, {len(seen.differences)} differ")
        for difference in seen.differences[:MOST_DIFFERENCES_SHOWN]:
            print("   ", difference)
        failed += bool(seen.differences)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
