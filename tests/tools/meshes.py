"""The meshes that the tool is asked about, and what the tests of its answers share."""

import csv
import io

from tool import SAMPLES, UNWRITABLE, WRONG_USE, ToolTest

MESHES = SAMPLES / "tri"

# Made by numpy, admesh and assimp: points, triangles, volume where the mesh is closed.
FIGURES = {
    "box.obj": (8, 12, 8),
    "negative_indices.obj": (8, 12, 8),
    "cube_with_vertexcolors.obj": (8, 12, 1),
    "cornell_box.obj": (76, 36, None),
    "reference.obj": (845, 1610, None),
    "Cube.off": (8, 12, 1),
    "ballA.off": (1900, 3796, 1401.11),
    "2triangles.ts": (4, 2, None),
    "Fault_without_crs.ts": (189, 324, None),
    "scodie_pvrtx.ts": (6, 4, None),
    "surf2d_multi.ts": (92, 92, None),
}

UTM = (600000.125, 7000000.123, 1234.5)
ORIGIN = (0, 0, 0)

CUBE = [(0, 0, 0), (1, 0, 0), (1, 1, 0), (0, 1, 0), (0, 0, 1), (1, 0, 1), (1, 1, 1), (0, 1, 1)]
FACES = [(0, 2, 1), (0, 3, 2), (4, 5, 6), (4, 6, 7), (0, 1, 5), (0, 5, 4), (1, 2, 6), (1, 6, 5),
         (2, 3, 7), (2, 7, 6), (3, 0, 4), (3, 4, 7)]


def obj(points, faces, at=ORIGIN):
    lines = ["v " + " ".join(repr(a + float(b)) for a, b in zip(at, point)) for point in points]
    lines += ["f " + " ".join(str(corner + 1) for corner in face) for face in faces]
    return "\n".join(lines) + "\n"


class MeshTest(ToolTest):
    def mesh(self, points=CUBE, faces=FACES, at=ORIGIN, name="mesh.obj"):
        return self.write(name, obj(points, faces, at))

    def info(self, file, *options):
        return self.json("mesh", "info", file, *options)

    def rows(self, text):
        return list(csv.DictReader(io.StringIO(text.decode(), newline="")))

    def refuses(self, command_lines):
        """Each is wrong use, and told of with the text beside it."""
        for arguments, expected in command_lines:
            with self.subTest(arguments=arguments):
                self.assertIn(expected, self.fails(WRONG_USE, *arguments))

    def keeps(self, sources, *arguments):
        """The command, which reads these files and is to write one of them, leaves them alone."""
        before = [file.read_bytes() for file in sources]
        self.assertIn("is the file that is read", self.fails(WRONG_USE, "mesh", *arguments))
        self.assertEqual([file.read_bytes() for file in sources], before)

    def finds_no_room(self, *arguments):
        text = self.fails(UNWRITABLE, "mesh", *arguments, "-o", "/dev/full")
        self.assertIn("can't write '/dev/full'", text)
