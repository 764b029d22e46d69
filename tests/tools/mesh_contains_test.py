"""Whether points are inside a mesh, one by one and as rows of a file."""

import json
import os
import unittest

from meshes import FACES, UTM, MeshTest
from terminal_test import ERASE, run_at_terminal
from tool import GOOD, NOT_FOUND, UNREADABLE, WRONG_USE, run


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

    def test_command_lines_that_make_no_sense(self):
        file = self.mesh()
        self.refuses([
            (["mesh", "contains", file], "either a point x y z is needed, or --points"),
            (["mesh", "contains", file, "1", "2"], "x, y and z"),
            (["mesh", "contains", file, "1", "2", "three"], "'three' is not a number"),
            (["mesh", "contains", file, "1", "2", "3", "--points", file], "either a point"),
            (["mesh", "contains", file, "1", "2", "3", "--tolerance", "-1"], "not below 0"),
            (["mesh", "contains", file, "1", "2", "3", "--tolerance", "inf"], "not a number"),
            (["mesh", "contains", file, "1", "2", "3", "--format", "csv"], "--points"),
            (["mesh", "contains", file, "1", "2", "3", "-o", "x"], "--points"),
            (["mesh", "contains", file, "--points", file, "--format", "text"], "one point"),
        ])

    def test_points_that_do_not_open(self):
        for points in [self.folder / "absent.csv", self.folder]:
            text = self.fails(UNREADABLE, "mesh", "contains", self.mesh(), "--points", points)
            self.assertIn(f"can't read '{points}'", text)

    def test_no_source_is_written_over(self):
        mesh, points = self.mesh(), self.write("points.csv", "x,y,z\n1,1,1\n")
        for out in (points, mesh):
            self.keeps([mesh, points], "contains", mesh, "--points", points, "-o", out)

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a device that is always full")
    def test_a_full_disk(self):
        points = self.write("points.csv", "x,y,z\n1,1,1\n")
        self.finds_no_room("contains", self.mesh(), "--points", points)


if __name__ == "__main__":
    unittest.main()
