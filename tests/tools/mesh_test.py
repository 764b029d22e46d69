"""What the tool answers about real meshes and meshes with one fault, and the files it makes."""

import csv
import io
import itertools
import json
import math
import os
import struct
import subprocess
import unittest

from terminal_test import ERASE, run_at_terminal
from tool import (GOOD, NOT_FOUND, SAMPLES, TOOL, UNREADABLE, UNWRITABLE, WRONG_USE, ToolTest,
                  environment, run)

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

    def attributes(self, file):
        return {each["name"]: (each["type"], each["value"])
                for each in self.info(file)["attributes"]}


class Info(MeshTest):
    def test_figures_of_real_meshes(self):
        for name, (points, triangles, volume) in FIGURES.items():
            with self.subTest(name):
                info = self.info(MESHES / name)
                self.assertEqual((info["points"], info["triangles"]), (points, triangles))
                if volume is None:
                    self.assertFalse(info["volume"] or info["solid"])
                else:
                    self.assertAlmostEqual(info["volume"], volume, delta=0.005)
                    self.assertEqual((info["solid"], info["consistent"]), (True, True))
        self.assertAlmostEqual(self.info(MESHES / "ballA.off")["area"], 605.909, delta=0.0005)
        extent = self.info(MESHES / "scodie_pvrtx.ts")["extent"]
        self.assertEqual((extent["lower"][0], extent["upper"][0]), (399811.84375, 410852.8125))

    def test_a_cube_as_a_person_reads_it(self):
        text = self.good("mesh", "info", self.mesh(at=UTM)).decode()
        for line in ["Points        8", "Triangles     12", "Area          6", "Volume        1",
                     "Solid         yes", "Consistent    yes", "Surface       no",
                     "Crossing      no", "Texture       none",
                     "600000.125 7000000.123 1234.5 to 600001.125 7000001.123 1235.5"]:
            self.assertIn(line, text)
        self.assertNotIn("border", text)

    def test_one_fault_at_a_time(self):
        # Name, points, faces, what is to be told; an edge by the place of one of its ends.
        rows = [
            ("a hole", CUBE, FACES[:-1],
             dict(volume=None, solid=False, consistent=True, closed=False, crossing=False,
                  border=(3, [0, 0, 1]), crowded=(0, None), misdirected=(0, None))),
            ("a triangle that looks inwards", CUBE, FACES[:-1] + [(3, 7, 4)],
             dict(volume=1, solid=False, consistent=False, closed=True,
                  border=(0, None), misdirected=(3, [0, 0, 1]))),
            ("a doubled triangle", CUBE, FACES + FACES[-1:],
             dict(volume=None, solid=False, consistent=False, closed=False, crossing=True,
                  crowded=(3, [0, 0, 1]), border=(0, None))),
            ("a triangle without area", CUBE, FACES + [(0, 0, 6)],
             dict(volume=1, solid=True, degenerate=1, crossing=False)),
            ("a point of no triangle", CUBE + [(9, 9, 9)], FACES, dict(solid=True, points=9)),
            ("points and no triangles", CUBE, [],
             dict(volume=None, solid=False, surface=False, crossing=False, area=0)),
            ("one sheet", CUBE, FACES[2:4],
             dict(surface=True, solid=False, border=(4, [0, 0, 1]))),
        ]
        for (name, points, faces, expected), at in itertools.product(rows, (ORIGIN, UTM)):
            with self.subTest(name, at=at):
                info = self.info(self.mesh(points, faces, at))
                for key, value in expected.items():
                    if not isinstance(value, tuple):
                        self.assertAlmostEqual(info[key], value, msg=key)
                        continue
                    number, end = value
                    self.assertEqual(info[key]["number"], number, key)
                    if end is None:
                        self.assertIsNone(info[key]["first"])
                    else:
                        self.assertIn([a + b for a, b in zip(at, end)], info[key]["first"])

    def test_faults_as_a_person_reads_them(self):
        text = self.good("mesh", "info", self.mesh(faces=FACES[:-1])).decode()
        self.assertIn("Volume        none: it is not closed", text)
        self.assertIn("  border      3 edges with one triangle, the first from 0 1 0 to 0 0 1",
                      text)
        text = self.good("mesh", "info", self.mesh(faces=FACES + FACES[-1:])).decode()
        self.assertIn("  crowded     3 edges with more than two triangles", text)
        self.assertIn("yes: 1 pair of triangles, 11 and 12 near ", text)

    def test_where_it_crosses_itself(self):
        flat = [(0, 0, 0), (4, 0, 0), (0, 4, 0)]
        apart, at_corner, at_edge = (3, 4, 5), (0, 3, 4), (0, 1, 3)
        # Name, the other triangle and its own corners, the one place where they can meet.
        rows = [
            ("through it", apart, [(1, 1, -1), (1, 1, 1), (1, 1.5, 1)], [1, 1, 0]),
            ("a corner on it", apart, [(1, 2, 0), (1, 2, 5), (3, 2, 5)], [1, 2, 0]),
            ("an edge on its edge", apart, [(1, 0, 0), (3, 0, 0), (2, 0, 5)], None),
            ("in its plane", apart, [(1, 1, 0), (9, 1, 0), (9, 2, 0)], None),
            ("through it from its corner", at_corner, [(1, 1, -1), (1, 1, 1)], [1, 1, 0]),
            ("in its plane from its corner", at_corner, [(9, 1, 0), (1, 9, 0)], None),
            ("folded about its edge", at_edge, [(1, 1, 0)], None),
        ]
        for (name, face, own, expected), at in itertools.product(rows, (ORIGIN, UTM)):
            with self.subTest(name, at=at):
                found = self.info(self.mesh(flat + own, [(0, 1, 2), face], at))["crossings"]
                self.assertEqual((found["number"], found["complete"], found["first"]),
                                 (1, True, [0, 1]))
                near = [a - b for a, b in zip(found["near"], at)]
                x, y, z = near
                self.assertAlmostEqual(z, 0, places=6)
                self.assertTrue(x > -1e-6 and y > -1e-6 and x + y < 4 + 1e-6, near)
                if expected:
                    for told, wanted in zip(near, expected):
                        self.assertAlmostEqual(told, wanted, places=6)

    def test_where_it_has_two_heights(self):
        # Name, points, faces, the first pair, the place and both heights.
        flat = [(0, 0, 0), (6, 0, 0), (0, 6, 0)]
        rows = [
            ("a corner over another", flat + [(1, 1, 2), (9, 1, 2), (9, 9, 2)],
             [(0, 1, 2), (3, 4, 5)], [0, 1], None, [0, 2]),
            ("one slopes away", [(1, 1, 7), (1, 1, 3), (2, 1, 3), (1, 2, 3)] + flat,
             [(1, 2, 3), (4, 5, 6)], [0, 1], None, [3, 0]),
            ("only edges cross in plan",
             [(0, 0, 0), (4, 0, 0), (2, 3, 0), (0, 2, 5), (4, 2, 5), (2, -1, 5)],
             [(0, 1, 2), (3, 4, 5)], [0, 1], None, [0, 5]),
            ("together along an edge, apart behind it",
             [(0, 0, 0), (4, 0, 0), (0, 4, 0), (0, 4, 8)], [(0, 1, 2), (0, 1, 3)],
             [0, 1], [0, 4], [0, 8]),
            ("vertical", [(0, 0, 0), (4, 4, 4), (1, 1, 9)], [(0, 1, 2)], [0, 0], [1, 1], [1, 9]),
            ("vertical, an edge too", [(2, 3, 5), (2, 3, 1), (2, 7, 0)], [(0, 1, 2)], [0, 0],
             [2, 3], [1, 5]),
        ]
        for (name, points, faces, pair, place, heights), at in itertools.product(
                rows, (ORIGIN, UTM)):
            with self.subTest(name, at=at):
                info = self.info(self.mesh(points, faces, at))
                self.assertFalse(info["surface"] or info["solid"])
                found = info["second_height"]
                self.assertEqual(found["first"], pair)
                x, y = (a - b for a, b in zip(found["at"], at))
                if place:
                    self.assertAlmostEqual(x, place[0], places=6)
                    self.assertAlmostEqual(y, place[1], places=6)
                self.assertTrue(-1e-6 < x < 9 + 1e-6 and -1e-6 < y < 9 + 1e-6, (x, y))
                for told, wanted in zip(found["heights"], heights):
                    self.assertAlmostEqual(told - at[2], wanted, places=6)
        text = self.good("mesh", "info", self.mesh([(0, 0, 0), (4, 4, 4), (1, 1, 9)],
                                                   [(0, 1, 2)])).decode()
        self.assertIn("Surface       no: triangle 0 stands vertical, with the heights 1 and 9 "
                      "at 1 1\n", text)
        text = self.good("mesh", "info", self.mesh(rows[3][1], rows[3][2])).decode()
        self.assertIn("no: triangles 0 and 1 have the heights 0 and 8 at 0 4\n", text)
        for faces in (FACES, [], FACES[2:4]):
            self.assertIsNone(self.info(self.mesh(faces=faces))["second_height"])

    def test_two_shells(self):
        points = CUBE + [(x + 0.5, y + 0.5, z + 0.5) for x, y, z in CUBE]
        faces = FACES + [tuple(corner + 8 for corner in face) for face in FACES]
        info = self.info(self.mesh(points, faces))
        self.assertEqual((info["solid"], info["crossing"]), (True, True))
        near = info["crossings"]["near"]
        for lower, upper in ((0, 1), (0.5, 1.5)):
            self.assertTrue(all(lower - 1e-9 <= each <= upper + 1e-9 for each in near), near)
            self.assertTrue(any(each in (lower, upper) for each in near), near)

    def test_the_count_of_crossings_is_bounded(self):
        found = self.info(self.mesh(faces=[(0, 1, 2)] * 600))["crossings"]
        self.assertEqual((found["number"], found["complete"]), (100000, False))
        self.assertIn("at least 100000 pairs",
                      self.good("mesh", "info", self.mesh(faces=[(0, 1, 2)] * 600)).decode())

    def test_quick_leaves_out_what_may_take_long(self):
        file = MESHES / "ballA.off"
        whole, quick = self.info(file), self.info(file, "--quick")
        self.assertEqual(quick, {key: value for key, value in whole.items()
                                 if key not in ("surface", "second_height", "crossing",
                                                "crossings")})
        text = self.good("mesh", "info", file, "--quick").decode()
        self.assertNotIn("Crossing", text)
        self.assertIn("Solid", text)

    def test_look_and_attributes_with_their_types(self):
        file = self.mesh()
        self.write("mesh.obj.json", json.dumps({
            "mesh:look": {"colour": "#102030", "translucency": 0.25, "texture": "rock.png"},
            "mesh:attributes": {
                "bench": 12, "far": 2**40, "is_ore": True, "density": 2.654321987,
                "stage": "north, phase 2", "surveyed": "2024/05/31",
                "planned": {"value": "02/05/2024", "type": "MDY_Date"},
                "mined": {"value": "02/05/2024", "type": "DMY_Date"}}}))
        info = self.info(file)
        self.assertEqual((info["colour"], info["translucent"], info["translucency"]),
                         ([16, 32, 48], True, 0.25))
        self.assertTrue(info["texture"].endswith("rock.png"), info["texture"])
        told = self.attributes(file)
        for name, expected in {
                "bench": ("int32", 12), "far": ("int64", 2**40), "is_ore": ("boolean", True),
                "density": ("double", 2.654321987), "stage": ("text", "north, phase 2"),
                "surveyed": ("date", "2024-05-31"), "planned": ("date", "2024-02-05"),
                "mined": ("date", "2024-05-02")}.items():
            self.assertEqual(told[name], expected)
        text = self.good("mesh", "info", file).decode()
        self.assertRegex(text, r"surveyed +date +2024-05-31\n")
        self.assertIn("Colour        16 32 48", text)

    def test_more_attributes_than_there_is_room_for(self):
        file = self.mesh()
        self.write("mesh.obj.json", json.dumps({"mesh:attributes": {
            f"key {i}": i for i in range(1500)}}))
        done = run("mesh", "info", file, "--format", "json")
        self.assertIn(b"of its 1500 attributes only the first 1000 are read", done.stderr)
        told = json.loads(done.stdout)["attributes"]
        self.assertEqual((done.returncode, sum(each["count"] for each in told)), (GOOD, 1000))
        self.assertIn(("closed", True), [(each["name"], each["value"]) for each in told])

    def test_attributes_of_one_name(self):
        file = self.write("notes.obj", "# one\n# two\n# three\n" + obj(CUBE, FACES))
        comment = [each for each in self.info(file)["attributes"] if each["name"] == "comment"]
        self.assertEqual([(each["value"], each["count"]) for each in comment], [("one", 3)])
        self.assertIn("(3 of this name)", self.good("mesh", "info", file).decode())


class Contains(MeshTest):
    # x, y, z in the cube of side 1 and the answer.
    PLACES = [((0.5, 0.5, 0.5), "inside"), ((1e-6, 0.5, 0.5), "inside"),
              ((-1e-6, 0.5, 0.5), "outside"), ((0, 0.5, 0.25), "on"), ((0.5, 0.5, 0), "on"),
              ((0, 0, 0.5), "on"), ((1, 1, 1), "on"), ((2, 0.5, 0.5), "outside"),
              ((0.5, 0.5, -3), "outside"), ((1e300, -1e300, 0), "outside")]

    def ask(self, file, point, *options):
        done = run("mesh", "contains", file, *map(repr, point), *options)
        self.assertEqual(done.stderr, b"")
        return done.returncode, done.stdout.decode()

    def test_one_point(self):
        words = {"inside": (GOOD, "inside\n"), "on": (GOOD, "on the surface\n"),
                 "outside": (NOT_FOUND, "outside\n")}
        file = self.mesh()
        for point, expected in self.PLACES:
            with self.subTest(point):
                self.assertEqual(self.ask(file, point), words[expected])
                told = json.loads(self.ask(file, point, "--format", "json")[1])
                self.assertEqual(told, {"point": list(point), "tolerance": 0, "side": expected})

    def test_tolerance(self):
        file = self.mesh()
        for point, tolerance, expected in [((1.25, 0.5, 0.5), 0.25, "on the surface\n"),
                                           ((1.25, 0.5, 0.5), 0.24, "outside\n"),
                                           ((0.9, 0.5, 0.5), 0.2, "on the surface\n"),
                                           ((0.9, 0.5, 0.5), 0.05, "inside\n")]:
            self.assertEqual(self.ask(file, point, "--tolerance", tolerance)[1], expected)

    def test_a_mesh_without_inside(self):
        for faces, expected in [(FACES[:-1], "3 edges have one triangle"),
                                (FACES + FACES[-1:], "odd number of triangles"),
                                ([], "no triangles")]:
            file = self.mesh(faces=faces)
            for question in (["0.5", "0.5", "0.5"], ["--points", file]):
                text = self.fails(WRONG_USE, "mesh", "contains", file, *question)
                self.assertIn("has no inside", text)
                self.assertIn(expected, text)

    def test_points_of_a_file_far_from_the_origin(self):
        # A corner plus a place may be rounded, as may a coordinate: what is asked for is told
        # from the cube's own corners.
        cube = self.mesh(at=UTM)
        box = [(a, a + 1.0) for a in UTM]
        names, places = [], []
        for i, (point, expected) in enumerate(self.PLACES):
            names.append(f"p{i}")
            places.append([a if b == 0 else a + b for a, b in zip(UTM, point)])
        text = "Hole,Z,y,X,note\n" + "".join(
            f'{name},{z!r},{y!r},{x!r},"a, ""b"""\n' for name, (x, y, z) in zip(names, places))
        points = self.write("points.csv", text)
        answered = self.rows(self.good("mesh", "contains", cube, "--points", points))
        self.assertEqual([row["Hole"] for row in answered], names)
        for row, place in zip(answered, places):
            strictly = all(low < each < high for each, (low, high) in zip(place, box))
            closed = all(low <= each <= high for each, (low, high) in zip(place, box))
            self.assertEqual(row["side"], "inside" if strictly else "on" if closed else "outside")
            self.assertEqual(row["note"], 'a, "b"')
        self.assertEqual({row["side"] for row in answered}, {"inside", "on", "outside"})

        told = self.json("mesh", "contains", cube, "--points", points)
        self.assertEqual([row["side"] for row in told], [row["side"] for row in answered])
        self.assertEqual([[row["X"], row["y"], row["Z"]] for row in told], places)
        self.assertEqual(told[0]["note"], 'a, "b"')

        out = self.write("out.csv", "older")
        self.assertEqual(self.good("mesh", "contains", cube, "--points", points, "-o", out), b"")
        self.assertEqual(self.rows(out.read_bytes()), answered)

    def test_forms_of_files_of_points(self):
        # Name, content, the answers as rows.
        rows = [
            ("no header", "0.5,0.5,0.5\n2,2,2\n", b"0.5,0.5,0.5,inside\n2,2,2,outside\n"),
            ("line ends of two bytes, none at the end", "x,y,z\r\n.5,.5,.5\r\n1,1,1",
             b"x,y,z,side\n.5,.5,.5,inside\n1,1,1,on\n"),
            ("a byte-order mark", "\ufeffx;y;z;n\n0.5;0.5;0.5;a,b\n",
             b"x;y;z;n;side\n0.5;0.5;0.5;a,b;inside\n"),
            ("tabs", "id\tx\ty\tz\n7\t.5\t.5\t.5\n", b"id\tx\ty\tz\tside\n7\t.5\t.5\t.5\tinside\n"),
            ("blanks", "x y  z\n 0.5  0.5 0.5 \n\n", b"x y  z side\n 0.5  0.5 0.5  inside\n"),
            ("an answer already", "x,y,z,side\n2,2,2,?\n", b"x,y,z,side,side_2\n2,2,2,?,outside\n"),
            ("a cell of two lines", 'x,y,z,n\n2,2,2,"a\nb"\n', b'x,y,z,n,side\n2,2,2,"a\nb",outside\n'),
            ("a header alone", "x,y,z\n", b"x,y,z,side\n"),
            ("nothing", "", b""),
        ]
        cube = self.mesh()
        for name, content, expected in rows:
            with self.subTest(name):
                points = self.write("points.csv", content)
                self.assertEqual(self.good("mesh", "contains", cube, "--points", points), expected)

    def test_columns_without_their_names(self):
        cube = self.mesh()
        for content, remark, expected in [
                ("east,north,level\n0.5,0.5,0.5\n", "taken are 'east', 'north' and 'level'", "inside"),
                ("hole,a,b,c\nH1,0.5,0.5,2\n", "taken are 'a', 'b' and 'c'", "outside"),
                ("9,0.5,0.5,0.5\n", "columns 1, 2 and 3", "outside")]:
            points = self.write("points.csv", content)
            done = run("mesh", "contains", cube, "--points", points)
            self.assertEqual(done.returncode, GOOD)
            self.assertIn(remark, done.stderr.decode())
            self.assertEqual(done.stdout.decode().splitlines()[-1].split(",")[-1], expected)

    def test_bad_rows_are_told_by_their_line(self):
        cube = self.mesh()
        good = "x,y,z\n0.5,0.5,0.5\n"
        rows = [
            (good + "0.5,abc,1\n", "line 3: 'abc' is not a number, for y"),
            (good + "\n\n1,2,\n", "line 5: '' is not a number, for z"),
            (good + "1,2,nan\n", "line 3: 'nan'"),
            (good + "1,2\n", "line 3: there are 2 cells, and the first row has 3"),
            (good + "1,2,3,4\n", "line 3: there are 4 cells"),
            (good + '1,2,"3\n', "line 3: a quote is opened"),
            ('x,y,z,n\n1,2,3,"a\nb"\n1,2,?,c\n', "line 4: '?'"),
            ("x,y,level\n1,2,3\n", "line 1: of the columns x, y and z, 'z' is not there"),
            ("a,b\n1,2\n", "line 2: a point needs three numbers"),
            ("x,y,z\n".encode("utf-16").decode("latin-1"), "line 1: there is a byte of 0"),
            (good + "1," + "2" * 2_000_000 + ",3\n", "line 3: the row is longer"),
        ]
        for content, expected in rows:
            with self.subTest(expected):
                points = self.write("points.csv", content)
                out = self.write("out.csv", "older")
                text = self.fails(UNREADABLE, "mesh", "contains", cube, "--points", points,
                                  "-o", out)
                self.assertIn(expected, text)
                self.assertIn("points.csv", text)
                self.assertEqual(out.read_text(), "older")

    def test_a_long_file_shows_how_far_it_is(self):
        points = self.write("points.csv", "x,y,z,n\n" + f"0.5,0.5,0.5,{'n' * 90}\n" * 3000)
        shown, output, code = run_at_terminal(
            ["mesh", "contains", self.mesh(), "--points", points], wait=0.9)
        self.assertEqual((code, output.count(b"\n")), (0, 3001))
        self.assertIn(b" bytes", shown)
        self.assertTrue(shown.endswith(ERASE), shown[-80:])


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


class Failures(MeshTest):
    def test_command_lines_that_make_no_sense(self):
        file = self.mesh()
        rows = [
            (["mesh"], "info, contains or export"),
            (["mesh", "melt", file], "info, contains or export"),
            (["mesh", "contains", file], "either a point x y z is needed, or --points"),
            (["mesh", "contains", file, "1", "2"], "x, y and z"),
            (["mesh", "contains", file, "1", "2", "three"], "'three' is not a number"),
            (["mesh", "contains", file, "1", "2", "3", "--points", file], "either a point"),
            (["mesh", "contains", file, "1", "2", "3", "--tolerance", "-1"], "not below 0"),
            (["mesh", "contains", file, "1", "2", "3", "--tolerance", "inf"], "not a number"),
            (["mesh", "contains", file, "1", "2", "3", "--format", "csv"], "--points"),
            (["mesh", "contains", file, "1", "2", "3", "-o", "x"], "--points"),
            (["mesh", "contains", file, "--points", file, "--format", "text"], "one point"),
            (["mesh", "export", file], "--to"),
            (["mesh", "export", file, "--to", "dxf"], "dxf"),
            (["mesh", "export", file, "--to", "ply", "--ascii"], "--ascii"),
        ]
        for arguments, expected in rows:
            with self.subTest(arguments=arguments):
                self.assertIn(expected, self.fails(WRONG_USE, *arguments))

    def test_files_that_do_not_open(self):
        self.assertIn("there is no file", self.fails(UNREADABLE, "mesh", "info", "absent.obj"))
        cut = (MESHES / "ballA.off").read_bytes()[:5000]
        for file in [self.write("noise.stl", bytes(range(256)) * 4), self.write("empty.obj", ""),
                     self.write("cut.off", cut), self.write("bad.obj", "v 0 0 0\nf 1 2 3\n"),
                     self.folder, f"{MESHES / 'box.obj'}#ore", SAMPLES / "blocks" / "walker_exhaustive.csv"]:
            for command in (["info"], ["contains"], ["export"]):
                more = {"contains": ["0", "0", "0"], "export": ["--to", "obj"]}
                text = self.fails(UNREADABLE, "mesh", *command, file, *more.get(command[0], []))
                self.assertIn("can't be opened as a mesh", text)
                self.assertIn(str(file), text)

    def test_points_that_do_not_open(self):
        for points in [self.folder / "absent.csv", self.folder]:
            text = self.fails(UNREADABLE, "mesh", "contains", self.mesh(), "--points", points)
            self.assertIn(f"can't read '{points}'", text)

    def test_no_source_is_written_over(self):
        mesh, points = self.mesh(), self.write("points.csv", "x,y,z\n1,1,1\n")
        link = self.folder / "link"
        link.symlink_to(mesh)
        for arguments in [["export", mesh, "--to", "obj", "-o", mesh],
                          ["export", mesh, "--to", "ply", "-o", link],
                          ["contains", mesh, "--points", points, "-o", points],
                          ["contains", mesh, "--points", points, "-o", mesh]]:
            before = mesh.read_bytes(), points.read_bytes()
            self.assertIn("is the file that is read", self.fails(WRONG_USE, "mesh", *arguments))
            self.assertEqual((mesh.read_bytes(), points.read_bytes()), before)

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a device that is always full")
    def test_a_full_disk(self):
        points = self.write("points.csv", "x,y,z\n1,1,1\n")
        for arguments in [["export", MESHES / "ballA.off", "--to", "ply"],
                          ["contains", self.mesh(), "--points", points]]:
            text = self.fails(UNWRITABLE, "mesh", *arguments, "-o", "/dev/full")
            self.assertIn("can't write '/dev/full'", text)

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
