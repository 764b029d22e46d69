"""The files that the tool makes of a mesh, read back by the tool and by themselves."""

import json
import math
import os
import struct
import subprocess
import unittest

from meshes import CUBE, FACES, FIGURES, MESHES, ORIGIN, UTM, MeshTest
from terminal_test import run_at_terminal
from tool import GOOD, TOOL, UNWRITABLE, WRONG_USE, environment, run


class Export(MeshTest):
    def exported(self, file, *to):
        out = self.folder / f"out.{to[0]}"
        self.assertEqual(self.good("mesh", "export", file, "--to", *to, "-o", out), b"")
        return out

    def test_a_mesh_comes_back_with_the_same_facts(self):
        exact = ("triangles", "extent", "solid", "consistent", "closed", "surface", "crossing")
        for name in [*FIGURES, "spider.obj", "concave_polygon.obj"]:
            before = self.info(MESHES / name)
            for to in (["obj"], ["ply"], ["stl", "--ascii"]):
                with self.subTest(name, to=to):
                    after = self.info(self.exported(MESHES / name, *to))
                    # STL has no points of its own: what is in no triangle, or twice, is gone.
                    if to[0] != "stl":
                        self.assertEqual(after["points"], before["points"])
                    for key in exact:
                        self.assertEqual(after[key], before[key], key)
                    for key in ("border", "crowded", "misdirected"):
                        self.assertEqual(after[key]["number"], before[key]["number"], key)
                    for key in ("area", "volume"):
                        if before[key] is None:
                            self.assertIsNone(after[key])
                        else:
                            self.assertTrue(math.isclose(after[key], before[key], rel_tol=1e-13))

    def test_no_digit_is_lost(self):
        file = self.mesh(at=UTM)
        points = [line.split()[1:] for line in file.read_text().splitlines() if line[0] == "v"]
        wanted = [list(map(float, point)) for point in points]
        corners = [[wanted[corner] for corner in face] for face in FACES]
        with self.subTest("obj"):
            lines = self.exported(file, "obj").read_text().splitlines()
            self.assertEqual([list(map(float, line.split()[1:])) for line in lines[:8]], wanted)
            self.assertEqual([tuple(int(each) - 1 for each in line.split()[1:])
                              for line in lines[8:]], FACES)
        with self.subTest("ply"):
            head, body = self.exported(file, "ply").read_bytes().split(b"end_header\n")
            self.assertIn(b"element vertex 8\n", head)
            told = [list(struct.unpack_from("<3d3B", body, 27 * i)) for i in range(8)]
            self.assertEqual(told, [point + [128, 128, 128] for point in wanted])
            self.assertEqual([struct.unpack_from("<B3i", body, 27 * 8 + 13 * i)
                              for i in range(12)], [(3, *face) for face in FACES])
            self.assertEqual(len(body), 27 * 8 + 13 * 12)
        with self.subTest("csv"):
            rows = self.rows(self.exported(file, "csv").read_bytes())
            told = [[[float(row[f"{axis}{i}"]) for axis in "xyz"] for i in (1, 2, 3)]
                    for row in rows]
            self.assertEqual(told, corners)
        with self.subTest("stl as text"):
            words = [line.split() for line in self.exported(file, "stl", "--ascii")
                     .read_text().splitlines()]
            told = [list(map(float, each[1:])) for each in words if each[0] == "vertex"]
            self.assertEqual(told, [corner for face in corners for corner in face])
            self.assertEqual([line[2:] for line in words if line[0] == "facet"][2],
                             ["0", "0", "1"])

    def test_binary_stl(self):
        for name in ("ballA.off", "box.obj"):
            before, after = (self.info(MESHES / name),
                             self.info(self.exported(MESHES / name, "stl")))
            self.assertEqual((after["points"], after["triangles"], after["solid"]),
                             (before["points"], before["triangles"], True))
            self.assertTrue(math.isclose(after["volume"], before["volume"], rel_tol=1e-6))
            self.assertEqual(after["colour"], before["colour"])
        facet = struct.unpack_from("<12fH", self.exported(MESHES / "box.obj", "stl").read_bytes(), 84)
        normal, corners = facet[:3], [facet[i:i + 3] for i in (3, 6, 9)]
        self.assertAlmostEqual(math.hypot(*normal), 1)
        for corner in corners[1:]:
            across = [n * (a - b) for n, a, b in zip(normal, corner, corners[0])]
            self.assertAlmostEqual(sum(across), 0)
        self.assertEqual(facet[12], 0)

    def test_floats_that_move_the_mesh_are_told_of(self):
        for at, is_told in [(ORIGIN, False), (UTM, True)]:
            points = [(x / 3, y / 3, z / 3) for x, y, z in CUBE]
            out = self.folder / "out.stl"
            done = run("mesh", "export", self.mesh(points, at=at), "--to", "stl", "-o", out)
            self.assertEqual((done.returncode, out.stat().st_size), (GOOD, 84 + 50 * 12))
            self.assertEqual(b"which move coordinates of this mesh by up to 0." in done.stderr,
                             is_told, done.stderr)
        far = self.mesh([(x * 1e40, y, z) for x, y, z in CUBE])
        self.assertIn("beyond", self.fails(WRONG_USE, "mesh", "export", far, "--to", "stl"))

    def test_look(self):
        file = self.mesh()
        self.write("mesh.obj.json", json.dumps({"mesh:look": {
            "colour": [200, 100, 50], "translucency": 0.2, "texture": "rock.png"}}))
        before = self.info(file)
        for to in ("ply", "stl"):
            after = self.info(self.exported(file, to))
            self.assertEqual((after["colour"], after["translucent"]), ([200, 100, 50], True))
            self.assertAlmostEqual(after["translucency"], 0.2, delta=0.5 / 255)
        self.assertEqual(self.info(self.exported(file, "ply"))["texture"], before["texture"])

    def test_points_without_triangles(self):
        file = self.mesh(faces=[])
        self.assertIn("has none", self.fails(WRONG_USE, "mesh", "export", file, "--to", "stl"))
        self.assertEqual(self.info(self.exported(file, "ply"))["points"], 8)
        self.assertEqual(self.exported(file, "csv").read_bytes().count(b"\n"), 1)

    def test_a_file_gets_the_same_bytes(self):
        for to in ("obj", "stl", "ply", "csv"):
            shown = self.good("mesh", "export", MESHES / "ballA.off", "--to", to)
            self.assertEqual(self.exported(MESHES / "ballA.off", to).read_bytes(), shown)
        self.assertEqual(len(list(self.folder.iterdir())), 4)

    def test_binary_is_kept_from_terminals(self):
        for to, code in [("ply", WRONG_USE), ("stl", WRONG_USE), ("csv", GOOD)]:
            shown, _, ended = run_at_terminal(["mesh", "export", self.mesh(), "--to", to], 0,
                                              stdout=None)
            self.assertEqual((ended, b"-o OUT" in shown), (code, code == WRONG_USE))

    def test_command_lines_that_make_no_sense(self):
        file = self.mesh()
        self.refuses([
            (["mesh", "export", file], "--to"),
            (["mesh", "export", file, "--to", "dxf"], "dxf"),
            (["mesh", "export", file, "--to", "ply", "--ascii"], "--ascii"),
        ])

    def test_no_source_is_written_over(self):
        mesh, link = self.mesh(), self.folder / "link"
        link.symlink_to(mesh)
        for to, out in [("obj", mesh), ("ply", link)]:
            self.keeps([mesh], "export", mesh, "--to", to, "-o", out)

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a device that is always full")
    def test_a_full_disk(self):
        self.finds_no_room("export", MESHES / "ballA.off", "--to", "ply")

    def test_a_reader_that_leaves(self):
        with subprocess.Popen([TOOL, "mesh", "export", MESHES / "ballA.off", "--to", "obj"],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              env=environment()) as tool:
            self.assertTrue(tool.stdout.readline().startswith(b"v "))
            tool.stdout.close()
            self.assertEqual(tool.stderr.read(), b"")
        self.assertEqual(tool.returncode, UNWRITABLE)


if __name__ == "__main__":
    unittest.main()
