"""The progress bar: there for a person who waits at a terminal, and for nobody else."""

import os
import pty
import subprocess
import threading
import time
import unittest

from tool import REGULAR, TOOL, ToolTest, environment, run

ERASE = b"\r\x1b[K"


def run_at_terminal(arguments, wait, stdout=subprocess.PIPE):
    """What a terminal shows of standard error, and what came on standard output, which
    is read only after `wait` seconds. The rows are more than a pipe holds, so that the
    tool has to wait as long."""
    ours, terminal = pty.openpty()
    shown = []

    def watch():
        try:
            while data := os.read(ours, 4096):
                shown.append(data)
        except OSError:  # the other end is closed
            pass

    with subprocess.Popen([TOOL, *map(str, arguments)], stderr=terminal,
                          stdout=terminal if stdout is None else stdout,
                          env=environment()) as tool:
        os.close(terminal)
        watcher = threading.Thread(target=watch)
        watcher.start()
        time.sleep(wait)
        output = tool.stdout.read() if tool.stdout else b""
    watcher.join()
    os.close(ours)
    return b"".join(shown), output, tool.returncode


class ProgressBar(ToolTest):
    def test_a_long_walk_shows_one_and_leaves_nothing(self):
        shown, output, code = run_at_terminal(["blocks", REGULAR], wait=0.8)
        self.assertEqual(code, 0)
        self.assertIn(b"of 5572 blocks", shown)
        self.assertTrue(shown.endswith(ERASE), shown[-80:])
        self.assertEqual(output.count(b"\n"), 5573)

    def test_none_where_nobody_waits_or_looks(self):
        with self.subTest("a short walk"):
            self.assertEqual(run_at_terminal(["blocks", REGULAR, "--first", 9], wait=0)[0], b"")
        with self.subTest("rows on the same terminal"):
            shown, _, _ = run_at_terminal(["blocks", REGULAR, "--vars", "Au_OK"], 0, stdout=None)
            self.assertNotIn(ERASE, shown)
            self.assertEqual(shown.count(b"\n"), 5573)
        with self.subTest("no terminal"):
            self.assertEqual(run("blocks", REGULAR, "--vars", "Au_OK").stderr, b"")


if __name__ == "__main__":
    unittest.main()
