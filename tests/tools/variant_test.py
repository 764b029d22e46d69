"""`zol variant`: files of values in all their forms, shown and converted."""

import json
import struct
import sys
import unittest
from pathlib import Path

from tool import GOOD, UNREADABLE, UNWRITABLE, WRONG_USE, ToolTest, run

DATA = Path(__file__).resolve().parent.parent / "support" / "data"
sys.path.insert(0, str(DATA))
from make_variant_samples import (DOUBLE, INT, INT64, MAP, STRING, VECTOR, aes,  # noqa: E402
                                  entry, header, padded, record)

CLEAR = DATA / "every_kind_clear.mvar"
SEALED = DATA / "every_kind_sealed.mvar"
SEALED_AES = DATA / "every_kind_sealed_aes.mvar"

EVERY_KIND = [None, 0.1, "Erz ä: 2.5 g/t\n", -5, ["x", []], {"density": {"": 1}},
              "0xfedcba9876543210", -2**40 - 1]


def clear_file(body):
    return header(b"MVAR") + body


class Forms(ToolTest):
    def test_each_form_is_recognised(self):
        text = self.write("settings", '* a note\n{ "a" = [1, -2.5, "b" "c"] }\n')
        rows = [(CLEAR, "binary, in the clear", EVERY_KIND),
                (SEALED, "binary, enciphered with Blowfish", EVERY_KIND),
                (SEALED_AES, "binary, enciphered with AES", EVERY_KIND),
                (text, "text", {"a": [1, -2.5, "bc"]})]
        for file, form, value in rows:
            with self.subTest(file=file):
                shown = self.good("variant", file).decode()
                self.assertEqual(shown.split("\n")[0], f"* {form}")
                self.assertEqual(shown.split("\n", 1)[1],
                                 self.good("variant", file, "--to", "text").decode())
                self.assertEqual(json.loads(self.good("variant", file, "--to", "json")), value)

    def test_text_is_the_text_form(self):
        file = self.write("m.mvar", clear_file(record(MAP, entry(b"b", record(
            VECTOR, record(STRING, b'q"'))) + entry(b"A", record(INT, struct.pack("<i", 1))))))
        self.assertEqual(self.good("variant", file, "--to", "text"),
                         b'{\n "A" = 1,\n "b" = \n  [\n    "q\\""\n  ]\n}\n')

    def test_conversions_through_files(self):
        out = self.folder / "out"
        for file in [CLEAR, SEALED, SEALED_AES]:
            self.assertEqual(self.good("variant", file, "--to", "sealed", out), b"")
            self.assertEqual(out.read_bytes(), SEALED.read_bytes())
        self.good("variant", SEALED, "--to", "json", out)
        self.assertEqual(json.loads(out.read_bytes()), EVERY_KIND)

        text = self.write("settings", '{\n "name" = "pit",\n "grades" = [ 0.5, 12345678901 ]\n}\n')
        self.good("variant", text, "--to", "sealed", out)
        self.good("variant", out, "--to", "text", self.folder / "again")
        self.assertEqual(json.loads(self.good("variant", self.folder / "again", "--to", "json")),
                         {"name": "pit", "grades": [0.5, 12345678901]})

    def test_what_is_shown_can_be_read(self):
        shown = self.write("shown", self.good("variant", CLEAR))
        values = json.loads(self.good("variant", shown, "--to", "json"))
        self.assertEqual(values[1], 0.1)
        self.assertIsNone(values[6], "a pointer is lost in the text form")

    def test_json_of_each_kind(self):
        def double(number):
            return record(DOUBLE, struct.pack("<d", number))

        rows = [(double(2.0), "2.0"), (double(-0.0), "-0.0"), (double(1e300), "1e+300"),
                (double(0.1), "0.1"), (double(float("nan")), '"NaN"'),
                (double(float("inf")), '"Infinity"'), (double(float("-inf")), '"-Infinity"'),
                (record(INT, struct.pack("<i", -2**31)), "-2147483648"),
                (record(INT64, struct.pack("<q", 2**63 - 1)), "9223372036854775807"),
                (record(STRING, b"\xe4 \xc3\xa4\x1b"), '"\ufffd ä\\u001b"'),
                (record(STRING, b""), '""'), (record(VECTOR), "[]"), (record(MAP), "{}"),
                (record(0), "null")]
        for body, expected in rows:
            with self.subTest(expected=expected):
                file = self.write("one", clear_file(body))
                self.assertEqual(self.good("variant", file, "--to", "json").decode(),
                                 expected + "\n")

    def test_deep_nesting(self):
        depth = 50_000
        body = b"".join(struct.pack("<BI", VECTOR, 5 * left) for left in range(depth, 0, -1))
        file = self.write("deep", clear_file(body))
        squeezed = self.good("variant", file, "--to", "json").translate(None, b" \n")
        self.assertEqual(squeezed, b"[" * depth + b"]" * depth)
        self.assertIn("49999 deep", self.fails(WRONG_USE, "variant", file, "--to", "text"))
        brackets = self.write("brackets", "[" * depth + "\n")
        self.assertIn("line 1: Unexpected End Of File", self.fails(UNREADABLE, "variant", brackets))


class Failures(ToolTest):
    def test_text_that_is_none(self):
        separator = "missing expected item separator"
        rows = [("", "line 1: Unexpected End Of File"),
                ("  \n", "line 1: Unexpected End Of File"),
                ("[1 2]\n", f"line 1: Error parsing variant vector: {separator}"),
                ("[\n1,\n2\n3]\n", f"line 4: Error parsing variant vector: {separator}"),
                ('*one\n*two\n{ "a" = "x\ny",\n "b" 1 }\n', "line 5: Error parsing variant map/hash: "
                 "missing expected operator '='"),
                ('{ "a" = 1 \n "b" = 2 }', f"line 2: Error parsing variant map/hash: {separator}"),
                ("{ a = 1 }", "line 1: Error parsing variant map/hash: missing expected '}'"),
                ("\x89PNG", "line 1: Error parsing variant: missing expected variant")]
        for content, expected in rows:
            with self.subTest(content=content):
                file = self.write("wrong", content)
                self.assertIn(f"zol: {file}: {expected}", self.fails(UNREADABLE, "variant", file))

    def test_binary_files_that_are_damaged(self):
        clear, sealed = CLEAR.read_bytes(), SEALED.read_bytes()
        rows = [(clear[:50], "there are 50 bytes"), (clear[:84], "there are 84 bytes"),
                (b"ZELMAR002" + clear[9:], "not of version 1"),
                (clear[:-1], "byte 84: a record reaches behind"),
                (clear[:84] + b"\x09" + clear[85:], "byte 84: there is no kind 9"),
                (clear[:90] + b"\x04" + clear[91:], "byte 89: a record's length is below 5"),
                (sealed[:-1], "with either cipher"),
                (sealed[:84] + bytes(136), "with either cipher"),
                (header(b"EMVAR") + aes(padded(record(STRING, b"x" * 40), 16))[:-16],
                 "with either cipher")]
        for content, expected in rows:
            with self.subTest(expected=expected):
                file = self.write("damaged", content)
                self.assertIn(expected, self.fails(UNREADABLE, "variant", file))

    def test_files_that_are_not_there(self):
        for name in [self.folder / "absent", self.folder, ""]:
            self.fails(UNREADABLE, "variant", name)

    def test_text_behind_the_value_is_told(self):
        done = run("variant", self.write("two", "5\n\n6\n"), "--to", "json")
        self.assertEqual((done.returncode, done.stdout), (GOOD, b"5\n"))
        self.assertIn(b"line 3: what stands behind the value is not read", done.stderr)

    def test_wrong_use(self):
        rows = [(["variant"], "FILE"), (["variant", CLEAR, "out"], "needs --to"),
                (["variant", CLEAR, "--to", "xml"], "'xml'"),
                (["variant", CLEAR, "--to", "sealed"], "needs OUT"),
                (["variant", CLEAR, "--to", "json", "a", "b"], "b")]
        for arguments, expected in rows:
            with self.subTest(arguments=arguments):
                self.assertIn(expected, self.fails(WRONG_USE, *arguments))

    def test_no_file_is_lost(self):
        old = self.write("old", "[1]\n")
        wrong = self.write("wrong", "[1 2]\n")
        self.fails(WRONG_USE, "variant", old, "--to", "json", old)
        self.fails(UNREADABLE, "variant", wrong, "--to", "sealed", old)
        self.fails(UNWRITABLE, "variant", old, "--to", "text", self.folder / "no" / "folder")
        self.assertEqual(old.read_bytes(), b"[1]\n")
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["old", "wrong"])


if __name__ == "__main__":
    unittest.main()
