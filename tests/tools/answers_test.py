"""What the tool answers about real models, against the files read by Python."""

import json
import unittest

from tool import OMF, REGULAR, SUBBLOCKED, GOOD, ToolTest, read_sample, run

# A text that is cut by the interface after 254 bytes: here in the middle of a character.
LONG_TEXT = "x" * 253 + "é" + "y" * 50
ODD_TEXTS = ["plain", 'with "quotes"', "comma, here", "two\nlines", "tab\there", "Ünïcödé", "",
             " blanks ", "\x1b[31mred", LONG_TEXT]


def odd_table():
    lines = ["x,y,z,dx,dy,dz,text,grade"]
    for i, text in enumerate(ODD_TEXTS):
        quoted = text.replace('"', '""')
        lines.append(f'{i + 0.5},0.5,0.5,1,1,1,"{quoted}",{i / 3!r}')
    return "\n".join(lines) + "\n"


class Info(ToolTest):
    def test_regular_model(self):
        info = self.json("info", REGULAR)
        self.assertEqual(info["name"], str(REGULAR), "the name as it was passed")
        self.assertEqual(info["blocks"], 5572)
        self.assertEqual(info["extent"]["lower"], [0, 0, 0])
        self.assertEqual(info["orientation"], [0, 0, 0])
        self.assertIs(info["stratigraphic"], False)
        parents = info["schemas"][0]
        self.assertEqual(parents["minimum_size"], [5, 5, 5])
        self.assertEqual(parents["dimensions"], [36, 40, 12])
        self.assertIn("Au_OK", [variable["name"] for variable in info["variables"]])
        self.assertIn("centroid_x", [variable["name"] for variable in info["predefined"]])

    def test_what_the_sidecar_tells(self):
        info = self.json("info", SUBBLOCKED)
        variables = {variable["name"]: variable for variable in info["variables"]}
        self.assertEqual(variables["au_ppm"]["type"], "float")
        self.assertEqual(variables["au_ppm"]["default"], -99)
        self.assertIn("Gold grade", variables["au_ppm"]["description"])
        self.assertEqual(variables["domain"]["default"], "WASTE")
        self.assertEqual(variables["domain"]["translations"],
                         ["WASTE", "OXIDE; upper", 'TRANS "mix"', "FRESH"])
        text = self.good("info", SUBBLOCKED).decode()
        for expected in ["121", "Gold grade", "OXIDE; upper", "n_src", "block_index"]:
            self.assertIn(expected, text)

    def test_omf_volume(self):
        info = self.json("info", OMF / "test_file.omf")
        self.assertEqual(info["blocks"], 3000)
        self.assertEqual(info["schemas"][0]["dimensions"], [10, 15, 20])
        self.assertEqual(info, {**self.json("info", f"{OMF / 'test_file.omf'}#vol"),
                                "name": info["name"]})

    def test_many_variables_are_all_listed(self):
        names = [f"element_{i}" for i in range(500)]
        file = self.write("wide.csv", "x,y,z,dx,dy,dz," + ",".join(names) + "\n"
                          + "1,1,1,2,2,2," + ",".join(map(str, range(500))) + "\n")
        self.assertEqual([v["name"] for v in self.json("info", file)["variables"]], names)
        text = self.good("info", file).decode()
        self.assertEqual(text.count("element_"), 500)
        self.assertEqual(self.rows(file)[0]["element_499"], "499")


class Blocks(ToolTest):
    def test_each_value_of_a_regular_model(self):
        origin = self.json("info", REGULAR)["origin"]
        expected = read_sample(REGULAR)
        found = self.rows(REGULAR)
        self.assertEqual(len(found), len(expected))
        for ours, theirs in zip(found, expected):
            for axis, start in zip("xyz", origin):
                self.assertAlmostEqual(float(ours[f"centroid_{axis}"]) + start,
                                       float(theirs[f"{axis.upper()}C"]), places=9)
            for name in ["__in", "Au_OK", "Au_NN", "Au_KVar"]:
                self.assertEqual(ours[name] and float(ours[name]),
                                 theirs[name] and float(theirs[name]), name)

    def test_json_says_the_same_as_csv(self):
        for file in [REGULAR, SUBBLOCKED, self.write("odd.csv", odd_table())]:
            for row, item in zip(self.rows(file), self.json("blocks", file), strict=True):
                self.assertEqual(list(row), list(item))
                for name, text in row.items():
                    value = item[name]
                    if isinstance(value, (int, float)):
                        self.assertEqual(float(text), value)
                    else:
                        self.assertEqual(text, value or "", "missing: empty, and null")

    def test_missing_values(self):
        values = [item["Au_OK"] for item in self.json("blocks", REGULAR, "--vars", "Au_OK")]
        self.assertEqual(values.count(None), 64)
        self.assertAlmostEqual(sum(v for v in values if v is not None), 6440.33132, places=5)
        # Of a single column an empty cell is quoted, since an empty line would be no row.
        lines = self.good("blocks", REGULAR, "--vars", "Au_OK").split(b"\n")
        self.assertEqual(lines.count(b'""'), 64)

    def test_numbers_are_the_shortest_of_their_type(self):
        expected = [row["au_ppm"] for row in read_sample(SUBBLOCKED)]
        found = [row["au_ppm"] for row in self.rows(SUBBLOCKED)]
        self.assertEqual(found, expected, "a float of the file's six digits, not its double")

    def test_classifications_print_names(self):
        found = [row["domain"] for row in self.rows(SUBBLOCKED, "--vars", "domain")]
        self.assertEqual(found, [row["domain"] for row in read_sample(SUBBLOCKED)])

    def test_texts_of_every_kind(self):
        file = self.write("odd.csv", odd_table())
        found = run("blocks", file, "--vars", "text")
        self.assertEqual(found.returncode, GOOD)
        cut = LONG_TEXT.encode()[:254]
        self.assertIn(cut + b"\n", found.stdout)
        texts = [item["text"] for item in self.json("blocks", file)]
        self.assertEqual(texts[:6], ODD_TEXTS[:6])
        self.assertIsNone(texts[6], "an empty text is no text")
        self.assertEqual(texts[-1], "x" * 253 + "\ufffd", "JSON holds no half characters")

    def test_columns_in_the_order_asked_for(self):
        names = "volume,Au_OK,centroid_z"
        whole = self.rows(REGULAR, "--vars", names)
        self.assertEqual(list(whole[0]), names.split(","))
        self.assertEqual(whole, self.rows(REGULAR, "--vars", "volume", "--vars", "Au_OK,centroid_z"))

    def test_a_name_with_a_comma(self):
        file = self.write("m.csv", 'x,y,z,dx,dy,dz,"Cu, ppm"\n1,1,1,2,2,2,7\n')
        self.assertEqual(self.rows(file, "--vars", "Cu, ppm"), [{"Cu, ppm": "7"}])

    def test_first_and_where_in(self):
        everything = self.rows(REGULAR)
        self.assertEqual(self.rows(REGULAR, "--first", 7), everything[:7])
        self.assertEqual(self.rows(REGULAR, "--first", 0), [])
        self.assertEqual(self.rows(REGULAR, "--first", 10**15), everything)
        self.assertEqual(json.loads(run("blocks", REGULAR, "--first", "0", "--format",
                                        "json").stdout), [])

        lower, upper = (12.5, -1, 2.5), (42.5, 52.5, 22.5)
        box = ",".join(map(str, lower + upper))
        inside = [row for row in everything
                  if all(a <= float(row[f"centroid_{axis}"]) <= b
                         for axis, a, b in zip("xyz", lower, upper))]
        self.assertGreater(len(inside), 50)
        self.assertEqual(self.rows(REGULAR, "--where-in", box), inside)
        self.assertEqual(self.rows(REGULAR, "--where-in", box, "--first", 3), inside[:3])


class At(ToolTest):
    def test_each_block_is_found_at_its_centroid(self):
        for file in [REGULAR, SUBBLOCKED]:
            rows = self.json("blocks", file)
            for position in range(0, len(rows), 1 + len(rows) // 12):
                row = rows[position]
                centroid = [row[f"centroid_{axis}"] for axis in "xyz"]
                found = self.json("at", file, *centroid)
                self.assertEqual(found["position"], position)
                self.assertEqual(found["values"], {**found["values"], **row})
                for axis, lower, upper in zip("xyz", *found["extent"].values()):
                    self.assertAlmostEqual(upper - lower, row[f"size_{axis}"])

    def test_world_coordinates_and_negative_numbers(self):
        file = self.write("m.csv", "x,y,z,dx,dy,dz,grade\n-1000,-.5,20,2,1,4,1.5\n-998,-.5,20,2,1,4,2.5\n")
        self.assertEqual(self.json("info", file)["origin"], [-1001, -1, 18])
        for x, grade in [("-1000", 1.5), ("-1e3", 1.5), ("-998.5", 2.5), ("-999", 2.5)]:
            found = self.json("at", file, x, "-.25", "20", "--world")
            self.assertEqual(found["values"]["grade"], grade, x)
        self.assertIn("grade", self.good("at", file, "0.5", "+0.5", "1").decode())


if __name__ == "__main__":
    unittest.main()
