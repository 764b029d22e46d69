"""Messages in other languages, and what is wrong with a dictionary."""

import json
import unittest

from tool import GOOD, NOT_FOUND, SAMPLES, UNREADABLE, WRONG_USE, ToolTest, run

MESSAGES = SAMPLES / "messages"
LANGUAGES = ["German", "Spanish"]


class Translate(ToolTest):
    def translated(self, language, text, folder=MESSAGES):
        done = run("translate", language, text, OSTREL_FLIB=str(folder))
        self.assertEqual((done.returncode, done.stderr), (GOOD, b""))
        return done.stdout.decode()

    def test_samples(self):
        for language, text, expected in [
                ("German", "Open##menu", "Öffnen"),
                ("German", "Open##of a stope", "Zugänglich"),
                ("German", "Open##of a file", "Open"),
                ("German", "Bench 3 of 12", "Strosse 3 von 12"),
                ("German", "40 blocks selected in pit (old)", "In pit (old) sind 40 Blöcke ausgewählt"),
                ("German", "Block model\t Ore: \nDelete it?", "Blockmodell\t Ore: \nit löschen?"),
                ("Spanish", "Delete pit 4?", "¿Eliminar pit 4?"),
                ("Spanish", "Can't open a.csv.", "No se puede abrir a.csv."),
                ("Spanish", "Haul roads", "Haul roads"),
                ("English", "Open##menu", "Open"),
                ("", "50\\#", "50#"),
                ("German", "", "")]:
            with self.subTest(language=language, text=text):
                self.assertEqual(self.translated(language, text), expected + "\n")

    def test_every_key_without_groups_is_found(self):
        for language in LANGUAGES:
            lines = [line for line in (MESSAGES / f"{language}_dictionary").read_text().splitlines()
                     if line and not line.startswith("#")]
            pairs = [pair for pair in zip(lines[::2], lines[1::2]) if "\\" not in pair[0]]
            keys, translations = ("\n".join(column) for column in zip(*pairs))
            with self.subTest(language):
                self.assertEqual(self.translated(language, keys), translations + "\n")

    def test_no_dictionary(self):
        self.assertIn(f"there is no dictionary '{MESSAGES}/Welsh_dictionary'",
                      self.fails(UNREADABLE, "translate", "Welsh", "Ore", OSTREL_FLIB=str(MESSAGES)))
        self.assertIn("OSTREL", self.fails(UNREADABLE, "translate", "German", "Ore"))
        self.fails(WRONG_USE, "translate", "German")


class DictionaryCheck(ToolTest):
    def findings(self, content):
        """(line, kind) of each finding, which text and JSON tell alike."""
        file = self.write("Test_dictionary", content)
        done = run("dictionary", "check", file, "--format", "json")
        told = json.loads(done.stdout)
        as_text = run("dictionary", "check", file)
        found = [(each["line"], each["kind"]) for each in told["findings"]]
        self.assertEqual(done.returncode, NOT_FOUND if found else GOOD)
        self.assertEqual(as_text.returncode, done.returncode)
        self.assertEqual(as_text.stderr + done.stderr, b"")
        self.assertEqual(as_text.stdout.decode(errors="replace").splitlines()[:-1],
                         [f"{file}:{each['line']}: {each['text']}" for each in told["findings"]])
        return found

    def test_samples_are_good(self):
        for language in LANGUAGES:
            self.assertRegex(self.good("dictionary", "check", MESSAGES / f"{language}_dictionary"),
                             rb"^\d\d pairs, 0 findings\n$")

    def test_findings(self):
        for name, content, expected in [
                ("nothing wrong", "# x\nOre\nErz\nSeam \\(.\\)\nF \\1 \\0\n", []),
                ("empty", "", []),
                ("unmatched bracket", "Ore\nErz\n\nSeam [\nF\n", [(4, "pattern")]),
                ("unmatched group", "Seam \\(a\nF\n", [(1, "pattern")]),
                ("reference to nothing", "Seam \\1\nF\n", [(1, "pattern")]),
                ("twice and again", "Ore\nErz\nOre\nErz\n#\nOre\nE\n",
                 [(3, "duplicate"), (6, "duplicate")]),
                ("dropped key", "Ore\nErz\nSeam", [(3, "untranslated")]),
                ("key in the last line", "Ore\nErz\nSeam[\n\n", [(3, "untranslated")]),
                ("comment for a translation", "Ore\n# Erz", [(1, "untranslated")]),
                ("group too high", "Seam \\(a\\)\nF \\1\\2\n", [(2, "group")]),
                ("brackets are no groups", "Seam [\\(] a\\\\(b\nF \\1\n", [(2, "group")]),
                ("group of a literal", "Seam (a)\nF \\1\n", [(2, "group")]),
                ("ten groups", "\\(a\\)" * 10 + "\n\\9\\0\n", []),
                ("carriage returns, told once", "Ore\r\nErz\r\nSeam\r\nF\r\n", [(1, "line end")]),
                ("several on one line", "Ore\nErz\nOre\n", [(3, "duplicate"), (3, "untranslated")]),
                ("bytes that are no text", b"\xff\x00[\\(\nX\\1\n", [(2, "group")]),
                ("long lines", "x" * (10 << 20) + "[\nF\n", [(1, "pattern")]),
        ]:
            with self.subTest(name):
                self.assertEqual(sorted(self.findings(content)), expected)

    def test_the_engine_says_what_it_does_not_compile(self):
        file = self.write("Test_dictionary", "Seam [\nF\n")
        self.assertEqual(run("dictionary", "check", file).stdout.decode(),
                         f"{file}:1: the key does not compile: Unmatched [ or [^\n"
                         "1 pair, 1 finding\n")

    def test_no_such_file(self):
        self.assertIn("there is no file 'absent'",
                      self.fails(UNREADABLE, "dictionary", "check", "absent"))
        self.assertIn("can't be read", self.fails(UNREADABLE, "dictionary", "check", self.folder))
        self.assertIn("check", self.fails(WRONG_USE, "dictionary"))


if __name__ == "__main__":
    unittest.main()
