"""The tool under test, and what the tests of it share.

ZOL_TOOL names the built program and ZOL_SAMPLES the folder of samples; ctest sets both.
"""

import csv
import io
import json
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

TOOL = os.environ["ZOL_TOOL"]
SAMPLES = Path(os.environ["ZOL_SAMPLES"])
BLOCKS = SAMPLES / "blocks"
OMF = SAMPLES / "omf"
GRIDS = SAMPLES / "grid"

REGULAR = BLOCKS / "estimate_regular.csv"
SUBBLOCKED = BLOCKS / "made_subblocked.csv"

GOOD, NOT_FOUND, WRONG_USE, UNREADABLE, UNWRITABLE = range(5)


def environment(**changes):
    """Ours without what would change the tool's ways, and with `changes`."""
    dropped = {"ZOL_DIAGNOSTICS", "OSTREL", "OSTREL_FLIB", "SAVE_UNTRANSLATED"}
    kept = {key: value for key, value in os.environ.items() if key not in dropped}
    return {**kept, **changes}


def run(*arguments, **changes):
    """The finished process, its outputs as bytes."""
    return subprocess.run([TOOL, *map(str, arguments)], env=environment(**changes),
                          stdin=subprocess.DEVNULL, capture_output=True, timeout=60)


class ToolTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def write(self, name, content):
        """A file of this test's own, from text or bytes."""
        file = self.folder / name
        file.write_bytes(content if isinstance(content, bytes) else content.encode())
        return file

    def good(self, *arguments):
        """Standard output of a run that ends well and says nothing else."""
        done = run(*arguments)
        self.assertEqual((done.returncode, done.stderr), (GOOD, b""), arguments)
        return done.stdout

    def json(self, *arguments):
        return json.loads(self.good(*arguments, "--format", "json"))

    def rows(self, *arguments):
        text = self.good("blocks", *arguments).decode(errors="replace")
        return list(csv.DictReader(io.StringIO(text, newline="")))

    def fails(self, code, *arguments, **changes):
        """What a failing run says; it must write nothing to standard output."""
        done = run(*arguments, **changes)
        self.assertEqual((done.returncode, done.stdout), (code, b""), (arguments, done.stderr))
        text = done.stderr.decode()
        self.assertTrue(text.startswith("zol: "), text)
        return text


def read_sample(file):
    """The sample's own rows, read without the tool."""
    with open(file, newline="") as text:
        return list(csv.DictReader(text))
