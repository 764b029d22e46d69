"""How the tool fails: its exit codes, and what it says to the person."""

import os
import subprocess
import unittest

from tool import (NOT_FOUND, OMF, REGULAR, TOOL, UNREADABLE, UNWRITABLE, WRONG_USE, ToolTest,
                  environment, run)


class WrongUse(ToolTest):
    def test_command_lines_that_make_no_sense(self):
        rows = [
            ([], "a command is needed"),
            (["melt", REGULAR], "a command is needed"),
            (["info"], "FILE"),
            (["info", REGULAR, "more"], "more"),
            (["info", REGULAR, "--format", "xml"], "xml"),
            (["blocks", REGULAR, "--first", "-1"], "'-1' is not a count"),
            (["blocks", REGULAR, "--first", "ten"], "'ten' is not a count"),
            (["blocks", REGULAR, "--vars"], "--vars"),
            (["blocks", REGULAR, "--where-in", "1,2,3"], "six numbers"),
            (["blocks", REGULAR, "--where-in", "0,0,0,1,1,nan"], "'nan' is not a number"),
            (["blocks", REGULAR, "--where-in", "0,0,0,1,1,1,1"], "'1,1' is not a number"),
            (["blocks", REGULAR, "--where-in", "5,0,0,1,1,1"], "lower corner"),
            (["at", REGULAR, "1", "2"], "z"),
            (["at", REGULAR, "1", "2", "3m"], "'3m' is not a number"),
            (["at", REGULAR, "1", "2", "1e999"], "'1e999' is not a number"),
        ]
        for arguments, expected in rows:
            with self.subTest(arguments=arguments):
                text = self.fails(WRONG_USE, *arguments)
                self.assertIn(expected, text)
                self.assertIn("--help", text)

    def test_unknown_variables(self):
        self.assertIn("Did you mean 'Au_OK'?",
                      self.fails(WRONG_USE, "blocks", REGULAR, "--vars", "au_ok"))
        text = self.fails(WRONG_USE, "blocks", REGULAR, "--vars", "Au_OK,uranium")
        self.assertIn("'uranium'", text)
        self.assertIn("Au_KVar", text, "nothing comes near, so all are listed")
        wide = self.write("wide.csv", "x,y,z,dx,dy,dz," + ",".join(f"v{i}" for i in range(500))
                          + "\n" + "1,1,1,2,2,2" + ",0" * 500 + "\n")
        self.assertLess(len(self.fails(WRONG_USE, "blocks", wide, "--vars", "gold_grade")), 1000)

    def test_help_tells_the_exit_codes(self):
        for arguments in [["--help"], ["blocks", "--help"]]:
            self.assertIn("Exit codes: 0 good", self.good(*arguments).decode())
        self.assertRegex(self.good("--version").decode(), r"^zol \d+\.\d+\.\d+\n$")


class Files(ToolTest):
    def test_no_such_file(self):
        for name in ["absent.csv", "absent.omf#vol", ""]:
            for command in [["info"], ["blocks"]]:
                text = self.fails(UNREADABLE, *command, name)
                self.assertIn(f"there is no file '{name}'", text)
                self.assertEqual(text.count("\n"), 1)

    def test_the_reason_is_told_once(self):
        omf = (OMF / "test_file.omf").read_bytes()
        for file in [self.write("short.csv", "x,y,z,dx,dy,dz,grade\n1,1,1,2,2,2,5\n3,1\n"),
                     self.write("cut.omf", omf[:len(omf) // 2]),
                     self.write("empty.csv", ""),
                     self.write("noise.bin", bytes(range(256)) * 20),
                     self.folder]:
            with self.subTest(file=file.name):
                text = self.fails(UNREADABLE, "info", file)
                self.assertEqual(text.count(str(file)), 1, text)
                self.assertIn("formats read", text)

    def test_no_such_element(self):
        self.assertIn("nothing_here",
                      self.fails(UNREADABLE, "info", f"{OMF / 'test_file.omf'}#nothing_here"))

    def test_the_reason_goes_where_the_environment_says(self):
        broken = self.write("broken.csv", "x,y,z\n1\n")
        reasons = self.folder / "reasons.txt"
        text = self.fails(UNREADABLE, "info", broken, ZOL_DIAGNOSTICS=str(reasons))
        self.assertIn("error opening/loading", text)
        self.assertIn(str(broken), reasons.read_text())


class NotFound(ToolTest):
    def test_a_point_outside(self):
        for point in [(-10, 5, 2.5), (1e300, 0, 0), (2.5, 2.5, 1e5)]:
            text = self.fails(NOT_FOUND, "at", REGULAR, *point)
            self.assertIn("no block at", text)
            self.assertIn("--world", text)
        self.fails(NOT_FOUND, "at", REGULAR, -10, 5, 2.5, "--world")


class Writing(ToolTest):
    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a device that is always full")
    def test_a_full_disk(self):
        for arguments in [["blocks", REGULAR], ["info", REGULAR]]:
            with open("/dev/full", "wb") as full:
                done = subprocess.run([TOOL, *arguments], stdout=full, stderr=subprocess.PIPE,
                                      env=environment(), timeout=60)
            self.assertEqual(done.returncode, UNWRITABLE)
            self.assertIn(b"can't write the output", done.stderr)

    def test_a_reader_that_leaves(self):
        with subprocess.Popen([TOOL, "blocks", REGULAR], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, env=environment()) as tool:
            self.assertTrue(tool.stdout.readline().startswith(b"centroid_x,"))
            tool.stdout.close()
            self.assertEqual(tool.stderr.read(), b"")
        self.assertEqual(tool.returncode, UNWRITABLE)

    def test_the_log_of_calls(self):
        log = self.folder / "calls.log"
        self.good("--log", log, "blocks", REGULAR, "--first", "2")
        lines = log.read_text().splitlines()
        self.assertEqual(lines[0], "ZOL_BlockModel_Open")
        self.assertIn("ZOL_BlockModel_NextBlock_calls: 2", lines)
        self.assertIn("absent", self.fails(UNWRITABLE, "--log", self.folder / "absent" / "x",
                                           "info", REGULAR))


if __name__ == "__main__":
    unittest.main()
