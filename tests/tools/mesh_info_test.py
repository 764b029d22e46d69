"""What the tool tells of real meshes, of meshes with one fault, and of what is no mesh."""

import itertools
import json
import unittest

from meshes import CUBE, FACES, FIGURES, MESHES, ORIGIN, UTM, MeshTest, obj
from tool import GOOD, SAMPLES, UNREADABLE, run


class Info(MeshTest):
    def attributes(self, file):
        return {each["name"]: (each["type"], each["value"])
                for each in self.info(file)["attributes"]}

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

    def test_command_lines_that_make_no_sense(self):
        file = self.mesh()
        self.refuses([
            (["mesh"], "info, contains or export"),
            (["mesh", "melt", file], "info, contains or export"),
        ])

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


if __name__ == "__main__":
    unittest.main()
