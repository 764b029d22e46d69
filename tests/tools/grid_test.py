"""What the tool answers about real grids, and the files and pictures it makes of them."""

import csv
import io
import json
import math
import os
import subprocess
import unittest

from png import Picture
from tool import (GOOD, GRIDS, NOT_FOUND, TOOL, UNREADABLE, UNWRITABLE, WRONG_USE, ToolTest,
                  environment, run)

# Made by GDAL and numpy: nodes, masked nodes, least and greatest value, sum.
FIGURES = {
    "pixel_per_line.asc": (15, 12, 0, 0, 3450, 62487.71001),
    "gsg_binary.grd": (20, 20, 0, 74, 255, 50706),
    "surfer-grid.grd": (222, 182, 0, -251.926, 175.437, -1083418.4194),
    "n43.tif": (121, 121, 0, 75, 460, 2369820),
    "float_nan.tif": (3, 2, 1, -1.88, 1.41, 0.85),
    "float_raster_with_nodata.tif": (13, 12, 58, 0, 0.25, 0.75),
    "test_with_mask_8bit.tif": (20, 20, 300, 127, 127, 12700),
    "grassascii.txt": (4, 6, 0, -9999, 100, -39429),
    "non_square_pixels.tif": (1, 2, 0, None, None, None),
}
ROUNDED = 1e-6  # the figures above have that many digits


class GridTest(ToolTest):
    def good(self, *arguments):
        """As for any file, but that one may lack its place, or be read against its letter, and
        is told of."""
        done = run(*arguments)
        known = [b"nodes are counted from 0", b"it opens, but: File with negative value for ScaleY"]
        told = [line for line in done.stderr.splitlines()
                if not any(remark in line for remark in known)]
        self.assertEqual((done.returncode, told), (GOOD, []), arguments)
        return done.stdout

    def table(self, *arguments):
        text = self.good("grid", "export", *arguments).decode()
        return list(csv.DictReader(io.StringIO(text, newline="")))

    def cone(self, size, name="cone.asc"):
        """A hill with its top in the middle, as a file."""
        middle = (size - 1) / 2
        rows = [" ".join(repr(size - math.hypot(i - middle, j - middle)) for i in range(size))
                for j in range(size)]
        return self.write(name, f"ncols {size}\nnrows {size}\nxllcorner 1000\nyllcorner 2000\n"
                                "cellsize 1\nNODATA_value -9999\n" + "\n".join(rows) + "\n")


class Info(GridTest):
    def test_figures_of_real_grids(self):
        for name, (width, height, masked, least, most, total) in FIGURES.items():
            with self.subTest(name):
                info = self.json("grid", "info", GRIDS / name)
                self.assertEqual(info["nodes"], [width, height])
                self.assertEqual(info["masked"], masked)
                if total is not None:
                    self.assertAlmostEqual(info["minimum"], least, delta=ROUNDED)
                    self.assertAlmostEqual(info["maximum"], most, delta=ROUNDED)
                    count = width * height - masked
                    self.assertAlmostEqual(info["mean"] * count, total, delta=1e-4)

    def test_extent_is_of_nodes(self):
        info = self.json("grid", "info", GRIDS / "gsg_binary.grd")
        self.assertEqual(info["extent"], {"lower": [440750, 3750150], "upper": [441890, 3751290]})
        self.assertEqual(info["spacing"], [60, 60])
        text = self.good("grid", "info", GRIDS / "n43.tif").decode()
        self.assertIn("-80 43 to -79 44", text)
        self.assertIn("0 of 14641 nodes", text)
        self.assertIn("75 to 460", text)

    def test_without_values(self):
        whole = self.json("grid", "info", GRIDS / "n43.tif")
        places = self.json("grid", "info", GRIDS / "n43.tif", "--no-values")
        self.assertEqual(places, {key: whole[key] for key in ["name", "nodes", "extent", "spacing"]})
        self.assertNotIn("Values", self.good("grid", "info", GRIDS / "n43.tif",
                                             "--no-values").decode())

    def test_all_masked(self):
        info = self.json("grid", "info", GRIDS / "all-nodata.tif")
        self.assertEqual(info["masked"], 71 * 2475)
        self.assertIsNone(info["mean"])
        self.assertIn("every node is masked",
                      self.good("grid", "info", GRIDS / "all-nodata.tif").decode())


class At(GridTest):
    def test_each_node_is_found_at_its_place(self):
        for name in ["n43.tif", "float_nan.tif", "grassascii.txt"]:
            rows = self.table(GRIDS / name, "--all")
            for row in rows[::1 + len(rows) // 7]:
                found = self.json("grid", "at", GRIDS / name, row["x"], row["y"])
                self.assertEqual(found["node"], [int(row["i"]), int(row["j"])])
                value = float(row["z"]) if row["z"] else None
                self.assertEqual(found["value"], value)
                self.assertEqual(found["bilinear"], value, "exact on a node")
                self.assertEqual(found["masked"], value is None)

    def test_between_nodes(self):
        file = GRIDS / "n43.tif"
        corners = [self.json("grid", "at", file, x, y)["value"]
                   for y in (43.5, 43.5 + 1 / 120) for x in (-79.25, -79.25 + 1 / 120)]
        found = self.json("grid", "at", file, -79.25 + 0.25 / 120, 43.5 + 0.75 / 120)
        south, north = (a + 0.25 * (b - a) for a, b in (corners[:2], corners[2:]))
        self.assertAlmostEqual(found["bilinear"], south + 0.75 * (north - south), places=6)
        self.assertEqual(found["value"], corners[2])

    def test_masked_nodes_are_named(self):
        # Only (2, 0) is masked, in the south-east.
        file = GRIDS / "float_nan.tif"
        found = self.json("grid", "at", file, 240, 60)
        self.assertEqual((found["node"], found["masked"], found["value"]), ([2, 0], True, None))
        self.assertEqual((found["bilinear"], found["masked_corners"]), (None, [[2, 0]]))
        text = self.good("grid", "at", file, 160, 120).decode()
        self.assertIn("its value     -0.23", text)
        self.assertIn("masked is node (2, 0)", text)
        self.assertIsNotNone(self.json("grid", "at", file, 200, 150)["bilinear"],
                             "between two nodes of the northern row the others don't count")

    def test_outside(self):
        for x, y in [(-81, 43.5), (-79.5, 44.001), ("1e300", 0)]:
            text = self.fails(NOT_FOUND, "grid", "at", GRIDS / "n43.tif", x, y)
            self.assertIn("Its extent is -80 43 to -79 44", text)


class Export(GridTest):
    def test_csv_has_what_info_tells(self):
        for name in FIGURES:
            with self.subTest(name):
                info = self.json("grid", "info", GRIDS / name)
                rows = self.table(GRIDS / name)
                values = [float(row["z"]) for row in rows]
                width, height = info["nodes"]
                self.assertEqual(len(rows), width * height - info["masked"])
                self.assertEqual((min(values), max(values)), (info["minimum"], info["maximum"]))
                self.assertAlmostEqual(math.fsum(values) / len(values), info["mean"], places=9)
                for row in rows:
                    for axis, index in (0, "i"), (1, "j"):
                        expected = info["extent"]["lower"][axis] + int(row[index]) * info["spacing"][axis]
                        self.assertAlmostEqual(float(row["xy"[axis]]), expected, places=6)

    def test_csv_from_the_north_with_masked_nodes_or_without(self):
        places = [(row["i"], row["j"]) for row in self.table(GRIDS / "float_nan.tif")]
        self.assertEqual(places, [("0", "1"), ("1", "1"), ("2", "1"), ("0", "0"), ("1", "0")])
        last = self.table(GRIDS / "float_nan.tif", "--all")[-1]
        self.assertEqual(last, {"i": "2", "j": "0", "x": "250", "y": "50", "z": ""})

    def test_csv_opens_again_as_the_same_grid(self):
        for name in ("gsg_binary.grd", "pixel_per_line.asc"):
            with self.subTest(name):
                exported = self.folder / "again.csv"
                self.good("grid", "export", GRIDS / name, "--format", "csv", "-o", exported)
                before, after = (self.json("grid", "info", file)
                                 for file in (GRIDS / name, exported))
                for axis in (0, 1):
                    self.assertAlmostEqual(after["extent"]["lower"][axis],
                                           before["extent"]["lower"][axis], places=6)
                for key in ("nodes", "minimum", "maximum"):
                    self.assertEqual(after[key], before[key])

    def test_computed_coordinates_are_not_long(self):
        file = self.write("tenths.asc", "ncols 4\nnrows 1\nxllcenter 0\nyllcenter 0\n"
                                        "cellsize 0.1\n1 2 3 4\n")
        self.assertEqual([row["x"] for row in self.table(file)], ["0", "0.1", "0.2", "0.3"])

    def test_asc_reads_back_as_the_same_grid(self):
        for name in [*FIGURES, "float64.asc", "all-nodata.tif"]:
            with self.subTest(name):
                copy = self.folder / f"{name}.asc"
                self.good("grid", "export", GRIDS / name, "--format", "asc", "-o", copy)
                self.assertEqual(self.table(copy, "--all"), self.table(GRIDS / name, "--all"))
                before, after = (self.json("grid", "info", file) for file in (GRIDS / name, copy))
                for key in ["nodes", "masked", "minimum", "maximum"]:
                    self.assertEqual(after[key], before[key], key)

    def test_asc_head(self):
        def head(name):
            text = self.good("grid", "export", GRIDS / name, "--format", "asc").decode()
            return dict(line.split() for line in text.splitlines()[:7] if line[0].isalpha())
        self.assertEqual(head("gsg_binary.grd"),
                         {"ncols": "20", "nrows": "20", "xllcenter": "440750",
                          "yllcenter": "3750150", "cellsize": "60", "NODATA_value": "-9999"})
        oblong = head("grassascii.txt")
        self.assertEqual(oblong["dx"], "62.5")
        self.assertNotIn("cellsize", oblong)
        self.assertEqual(oblong["NODATA_value"], "-99999", "since -9999 is a value there")

    def test_a_file_gets_the_same_bytes(self):
        for form in ["csv", "asc"]:
            file = self.write("old", "an older one, which is replaced")
            self.assertEqual(self.good("grid", "export", GRIDS / "n43.tif", "--format", form,
                                       "-o", file), b"")
            self.assertEqual(file.read_bytes(),
                             self.good("grid", "export", GRIDS / "n43.tif", "--format", form))
        self.assertEqual([each.name for each in self.folder.iterdir()], ["old"])


class Plot(GridTest):
    def plotted(self, file):
        picture = self.folder / "out.png"
        self.assertEqual(self.good("grid", "plot", file, "-o", picture), b"")
        return Picture(picture)

    def test_real_grids(self):
        # Colours are many where there is relief, and few where there is little to see.
        for name, fewest, most in [("n43.tif", 1000, 10**6), ("surfer-grid.grd", 1000, 10**6),
                                   ("float_nan.tif", 100, 2000), ("negative_scaley.tif", 50, 1000),
                                   ("float32_with_nodata_slightly_above_float_max.tif", 100, 2000)]:
            with self.subTest(name):
                picture = self.plotted(GRIDS / name)
                self.assertLessEqual(max(picture.width, picture.height), 1600)
                self.assertGreaterEqual(min(picture.width, picture.height), 200)
                self.assertTrue(fewest <= len(picture.colours()) <= most, len(picture.colours()))
                self.assertEqual(picture.at(0, 0), (255, 255, 255))

    def test_light_falls_from_the_north_west(self):
        picture = self.plotted(self.cone(101))
        # The map's frame is the first and the last row of pixels with a long dark line.
        dark = [[x for x in range(picture.width) if sum(picture.at(x, y)) < 60]
                for y in range(picture.height)]
        framed = [y for y, xs in enumerate(dark) if len(xs) > picture.width / 2]
        left, top, size = min(dark[framed[0]]), framed[0], framed[-1] - framed[0]
        north_west, south_east = (
            sum(picture.at(left + int(size * part), top + int(size * part))) for part in (0.3, 0.7))
        self.assertGreater(north_west, 1.5 * south_east)

    def test_a_grid_larger_than_the_picture(self):
        rows = "\n".join(" ".join(str((i // 50 + j // 50) % 2) for i in range(2000))
                         for j in range(300))
        file = self.write("wide.asc", "ncols 2000\nnrows 300\nxllcorner 0\nyllcorner 0\n"
                                      f"cellsize 5\nNODATA_value -9999\n{rows}\n")
        picture = self.plotted(file)
        self.assertTrue(900 < picture.width <= 1600, picture.width)

    def test_nothing_to_plot(self):
        picture = self.folder / "out.png"
        text = self.fails(NOT_FOUND, "grid", "plot", GRIDS / "all-nodata.tif", "-o", picture)
        self.assertIn("masked", text)
        self.assertFalse(picture.exists())

    def test_without_fonts(self):
        nowhere = self.write("fonts.conf", "<fontconfig></fontconfig>")
        picture = self.folder / "out.png"
        done = run("grid", "plot", GRIDS / "n43.tif", "-o", picture, FONTCONFIG_FILE=str(nowhere))
        self.assertEqual(done.returncode, GOOD, done.stderr)
        self.assertGreater(len(Picture(picture).colours()), 1000)


class Failures(GridTest):
    def test_command_lines_that_make_no_sense(self):
        file = GRIDS / "n43.tif"
        rows = [
            (["grid"], "info, at, export or plot"),
            (["grid", "melt", file], "info, at, export or plot"),
            (["grid", "at", file, "1"], "y"),
            (["grid", "at", file, "1", "two"], "'two' is not a number"),
            (["grid", "export", file, "--format", "xyz"], "xyz"),
            (["grid", "export", file, "--format", "asc", "--all"], "--all"),
            (["grid", "plot", file], "--output"),
        ]
        for arguments, expected in rows:
            with self.subTest(arguments=arguments):
                self.assertIn(expected, self.fails(WRONG_USE, *arguments))

    def test_files_that_do_not_open(self):
        self.assertIn("there is no file", self.fails(UNREADABLE, "grid", "info", "absent.tif"))
        noise = self.write("noise.tif", bytes(range(256)) * 4)
        for file, reason in [(noise, "in no format that is read; those are"),
                             (GRIDS / "rotated.tif", "rotated or sheared"),
                             (self.folder, "a folder"),
                             (f"{GRIDS / 'n43.tif'}#9", "no band \"9\"")]:
            text = self.fails(UNREADABLE, "grid", "info", file)
            self.assertIn(reason, text)
            self.assertIn(f"'{file}' can't be opened as a grid", text)
            self.assertEqual("those are" in text, file == noise, "formats are told of it alone")

    def test_the_source_is_never_written_over(self):
        file = self.cone(5)
        before = file.read_bytes()
        link = self.folder / "link"
        link.symlink_to(file)
        for source, to in [(file, file), (f"{file}#1", file), (file, link)]:
            for command in [["export"], ["plot"]]:
                text = self.fails(WRONG_USE, "grid", *command, source, "-o", to)
                self.assertIn("is the file that is read", text)
        self.assertEqual(file.read_bytes(), before)

    def test_a_failure_on_the_way_leaves_the_older_file(self):
        whole = (GRIDS / "gsg_binary.grd").read_bytes()
        cut = self.write("cut.grd", whole[:len(whole) // 2])
        for command in [["export"], ["export", "--format", "asc"], ["plot"]]:
            old = self.write("old", "older")
            text = self.fails(UNREADABLE, "grid", *command, cut, "-o", old)
            self.assertIn("can't be read", text)
            self.assertEqual(old.read_text(), "older")
            self.assertEqual(len(list(self.folder.iterdir())), 2)

    def test_a_damaged_grid_still_tells_where_it_lies_and_what_is_lost(self):
        # Nine of its twenty rows, from the south, are whole.
        whole = (GRIDS / "gsg_binary.grd").read_bytes()
        cut = self.write("cut.grd", whole[:len(whole) // 2])
        done = run("grid", "info", cut)
        self.assertEqual(done.returncode, UNREADABLE)
        self.assertIn(b"220 nodes of", done.stderr)
        self.assertIn(b"can't be read, between (0, 9) and (19, 19).", done.stderr)
        self.assertIn(b"Extent", done.stdout)
        self.assertIn(b"Unreadable  220 nodes between (0, 9) and (19, 19)", done.stdout)
        self.assertNotIn(b"Values", done.stdout)
        done = run("grid", "info", "--format", "json", cut)
        self.assertEqual(done.returncode, UNREADABLE)
        info = json.loads(done.stdout)
        self.assertEqual(info["nodes"], [20, 20])
        self.assertEqual(info["unreadable"], {"nodes": 220, "lower": [0, 9], "upper": [19, 19]})
        self.assertNotIn("mean", info)

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a device that is always full")
    def test_a_full_disk(self):
        for command in [["export"], ["plot"]]:
            text = self.fails(UNWRITABLE, "grid", *command, GRIDS / "n43.tif", "-o", "/dev/full")
            self.assertIn("can't write '/dev/full'", text)
        self.assertIn("can't write", self.fails(UNWRITABLE, "grid", "plot", GRIDS / "n43.tif",
                                                "-o", self.folder / "absent" / "out.png"))

    def test_a_reader_that_leaves(self):
        with subprocess.Popen([TOOL, "grid", "export", GRIDS / "surfer-grid.grd"],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              env=environment()) as tool:
            self.assertEqual(tool.stdout.readline(), b"i,j,x,y,z\n")
            tool.stdout.close()
            self.assertEqual(tool.stderr.read(), b"")
        self.assertEqual(tool.returncode, UNWRITABLE)


if __name__ == "__main__":
    unittest.main()
