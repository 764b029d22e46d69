"""Reads the samples with nothing but Python's standard library.

Shares no code and no rule with the engine: what a sample's text does not say (separator,
roles, lattice) is written down for each sample in compare_with_python.py, by a person.
"""

import csv
import io
import itertools
import json
import math
import re
import struct
import zlib
from dataclasses import dataclass, field

WHOLE_NUMBER = re.compile(r"[+-]?\d+")
# What every reader takes for a missing number when nothing else is stated.
MISSING = {"", "nan", "na", "null"}


@dataclass
class Variable:
    """What the library has to say of a variable, and its value in every block."""
    name: str
    type_name: str
    numbers: list
    # The text of each block where it isn't the number's own, else None.
    texts: list = None
    description: str = ""
    default_number: float = math.nan
    default_text: str = ""
    translations: list = field(default_factory=list)

    @property
    def is_text(self):
        return self.type_name == "string"


@dataclass
class Table:
    header: list
    rows: list

    def cells(self, name):
        place = self.header.index(name)
        return [row[place] for row in self.rows]

    def floats(self, name):
        return [float(cell) for cell in self.cells(name)]


def decode(path):
    return path.read_bytes().decode("utf-8-sig")


def read_csv(path, delimiter=",", comment=None, header=None):
    """A table with a header row, or with the names given; `comment` starts lines to skip."""
    lines = io.StringIO(decode(path), newline="")
    if comment is not None:
        lines = (line for line in lines if not line.startswith(comment))
    # Without the separator as first character of a cell, a quote is an ordinary character.
    rows = [row for row in csv.reader(lines, delimiter=delimiter) if row]
    return Table(header, rows) if header else Table(rows[0], rows[1:])


def read_geoeas(path):
    """GEO-EAS text: a title, the count of columns and facts of the lattice, names, rows.
    Gives the table and the numbers behind the count."""
    lines = decode(path).splitlines()
    count, *lattice = lines[1].split()
    names = [line.strip() for line in lines[2:2 + int(count)]]
    rows = [line.split() for line in lines[2 + int(count):] if line.strip()]
    return Table(names, rows), [float(number) for number in lattice]


def guessed(name, cells):
    """A variable whose type nothing states: whole numbers, other numbers, or texts."""
    present = [cell for cell in cells if cell.strip().lower() not in MISSING]
    if all(WHOLE_NUMBER.fullmatch(cell.strip()) for cell in present):
        wide = any(not -2**31 <= int(cell) < 2**31 for cell in present)
        type_name = "int64" if wide else "integer"
    else:
        type_name = "double"
        try:
            for cell in present:
                float(cell)
        except ValueError:
            return Variable(name, "string", [math.nan] * len(cells), texts=cells)
    numbers = [math.nan if cell.strip().lower() in MISSING else float(cell) for cell in cells]
    return Variable(name, type_name, numbers)


def as_float(value):
    """A double rounded to single precision."""
    return struct.unpack("f", struct.pack("f", value))[0]


def as_stated(name, cells, facts):
    """A variable whose type, default and translations the sidecar states."""
    missing = set(facts["missing"])
    decimal = facts.get("decimalChar", ".")
    default = facts.get("block:default", math.nan)
    description = facts.get("description", "")
    if "block:unit" in facts:
        description += f" [{facts['block:unit']}]"
    if "block:translations" in facts:
        # A classification: its number is the place of its text in the list.
        translations = facts["block:translations"]
        texts = [default if cell in missing else cell for cell in cells]
        return Variable(name, "integer", [float(translations.index(text)) for text in texts], texts,
                        description, float(translations.index(default)), default, translations)
    storage = facts["block:storage"]
    rounded = as_float if storage == "float" else float
    numbers = [rounded(default if cell in missing else float(cell.replace(decimal, ".")))
               for cell in cells]
    return Variable(name, storage, numbers, description=description,
                    default_number=rounded(default))


def sidecar_of(path):
    """The sidecar's fields by name, each with the missing texts that hold for it, and its
    facts of the model."""
    document = json.loads(decode(path.with_name(path.name + ".json")))
    schema = document["schema"]
    fields = {each["name"]: {"missing": schema.get("missingValues", [""]), **each}
              for each in schema["fields"]}
    return fields, document["block:model"]


def boxes_around(centroids, sizes):
    """Boxes from centroids and sizes, both lists of (x, y, z)."""
    return [tuple(c - s / 2 for c, s in zip(centroid, size))
            + tuple(c + s / 2 for c, s in zip(centroid, size))
            for centroid, size in zip(centroids, sizes)]


def lattice_boxes(counts, size):
    """Boxes of a full lattice at the origin, x fastest, then y, then z."""
    nx, ny, nz = counts
    corners = ((i, j, k) for k, j, i in itertools.product(range(nz), range(ny), range(nx)))
    return [tuple(n * s for n, s in zip(corner, size))
            + tuple((n + 1) * s for n, s in zip(corner, size)) for corner in corners]


class Omf1:
    """The objects of an OMF 1 file."""
    MAGIC = b"\x84\x83\x82\x81"

    def __init__(self, path):
        self._bytes = path.read_bytes()
        if self._bytes[:4] != self.MAGIC:
            raise ValueError("not an OMF 1 file")
        (json_start,) = struct.unpack_from("<Q", self._bytes, 52)
        self._objects = json.loads(self._bytes[json_start:])

    def __getitem__(self, key):
        return self._objects[key]

    def of_class(self, name):
        return [each for each in self._objects.values() if each["__class__"] == name]

    def doubles(self, array_key):
        blob = self._objects[array_key]["array"]
        raw = zlib.decompress(self._bytes[blob["start"]:blob["start"] + blob["length"]])
        return list(struct.unpack(f"<{len(raw) // 8}d", raw))
