#!/usr/bin/env python3
"""Runs the benchmarks and prints their figures as one table: compare.py BUILD DATA SAMPLES

Whatever is compared is run in turns with its peer, each in a process of its own, and the
best of the turns counts on both sides: what disturbs a machine only ever makes it slower.
"""

import json
import math
import statistics
import subprocess
import sys
from pathlib import Path

TURNS = 3
HERE = Path(__file__).resolve().parent

build, data, samples = (Path(argument) for argument in sys.argv[1:4])
table = []


def add_row(what, ours, peer, ratio="", goal=""):
    table.append((what, ours, peer, ratio, goal))
    print(f"  {what}: {ours} | {peer} {ratio}", file=sys.stderr)


def run(*command):
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, text=True)
    if done.returncode != 0:
        sys.exit(f"compare.py: failed: {' '.join(map(str, command))}")
    return json.loads(done.stdout)


def seconds(figures):
    return figures["open_s"] + figures["read_s"]


def best(runs):
    return {"seconds": min(map(seconds, runs)),
            **{key: min(each[key] for each in runs) for key in ("cpu_s", "peak_mb")}}


def sum_column(*arguments):
    return run(build / "bin" / "sum_column", *arguments)


def guard():
    figures = run(build / "bin" / "guard_bench", "--benchmark_format=json",
                  "--benchmark_min_time=0.5", samples / "blocks" / "gslib_kriging_50x50.out")
    cost = {each["name"]: each for each in figures["benchmarks"]}
    for name in [each.rsplit("/", 1)[0] for each in cost if each.endswith("/flat")]:
        flat, underneath = cost[name + "/flat"], cost[name + "/underneath"]
        words = [f"{each['cpu_time']:.1f} ns, {each['allocations']:g} allocations"
                 for each in (flat, underneath)]
        add_row(f"{name}: flat library, model underneath", *words,
                f"{flat['cpu_time'] - underneath['cpu_time']:+.1f} ns", "at most +5 ns")


def walk_vs_gdal():
    rates = run(build / "bin" / "walk_vs_gdal", data / "small.csv", "au", "cu", "density")
    for what, ours, peer, goal in (
            ("walk again, GDAL with all fields", "again", "gdal", "20"),
            ("walk again, GDAL told the three fields", "again", "gdal_three_fields", ""),
            ("open and walk once, GDAL with all fields", "once", "gdal", "")):
        add_row(f"1 M rows, 3 numbers of each by name: {what}", f"{rates[ours]:.1f} M values/s",
                f"{rates[peer]:.2f} M values/s", f"{rates[ours] / rates[peer]:.1f}", goal)


def csv_vs_pandas():
    file = data / "csv.csv"
    for what, columns in (("one column", ["au"]), ("all columns", [])):
        ours, theirs = [], []
        for _ in range(TURNS):
            ours.append(sum_column(file, *columns))
            theirs.append(run("/usr/bin/python3", HERE / "read_pandas.py", file, *columns))
        if columns and not math.isclose(ours[0]["sum"], theirs[0]["sum"], rel_tol=1e-9):
            sys.exit("compare.py: the two readers disagree")
        ours, theirs = best(ours), best(theirs)
        add_row(f"5 M rows x 12 columns, {what}: time", f"{ours['seconds']:.2f} s",
                f"pandas {theirs['seconds']:.2f} s",
                f"{theirs['seconds'] / ours['seconds']:.1f}", "3")
        # Less disturbed by what else the machine does; ours may use all processors.
        add_row(f"5 M rows x 12 columns, {what}: processor time", f"{ours['cpu_s']:.2f} s",
                f"pandas {theirs['cpu_s']:.2f} s", f"{theirs['cpu_s'] / ours['cpu_s']:.1f}")
        add_row(f"5 M rows x 12 columns, {what}: peak memory", f"{ours['peak_mb']:.0f} MB",
                f"pandas {theirs['peak_mb']:.0f} MB",
                f"{theirs['peak_mb'] / ours['peak_mb']:.1f}", "3")


def omf_first_value():
    file = data / "volume.omf"
    one = best([sum_column("--first-block", file, "grade_0") for _ in range(TURNS)])
    every = best([sum_column("--first-block", file) for _ in range(TURNS)])
    add_row("OMF of 10 M cells x 6 columns, first value of one column, of all: time",
            f"{one['seconds']:.2f} s", f"{every['seconds']:.2f} s",
            f"{every['seconds'] / one['seconds']:.1f}")
    add_row("OMF of 10 M cells x 6 columns, first value of one column, of all: peak memory",
            f"{one['peak_mb']:.0f} MB", f"{every['peak_mb']:.0f} MB",
            f"{every['peak_mb'] / one['peak_mb']:.1f}")


def large_walk():
    file = data / "large.csv"
    for columns in ([], ["au"], ["au", "cu"], ["au", "cu", "lith"]):
        if columns:
            figures = sum_column(file, *columns)
            what = f"walked, {len(columns)} columns read"
        else:
            figures = sum_column("--first-block", file, "block_index")
            what = "opened only"
        add_row(f"10 M blocks, {what}", f"{seconds(figures):.2f} s",
                f"{figures['peak_mb']:.0f} MB")


def small_reads():
    figures = run(build / "bin" / "support_files", data / "small.csv")
    ours, theirs = figures["file_read_s"], figures["fread_s"]
    add_row("200,000 reads of 16 bytes: file_Read, fread", f"{ours * 1000:.2f} ms",
            f"{theirs * 1000:.2f} ms", f"{ours / theirs:.2f}", "at most 1.5")


def texts_in_a_table():
    for name, figures in run(build / "bin" / "support_strtab").items():
        ours, theirs = figures["ours_ns"], figures["peer_ns"]
        add_row(f"strtab_Get, {name} keys in {figures['buckets']} buckets: std::unordered_map",
                f"{ours:.0f} ns", f"{theirs:.0f} ns", f"{ours / theirs:.2f}",
                "at most 2" if name.startswith("short") else "")


def values_as_text():
    for name, figures in run(build / "bin" / "support_variant_text", data).items():
        shape, work = name.split("_")
        ours, theirs = figures["ours_s"], figures["nlohmann_s"]
        add_row(f"50 MB of values, {shape}, {work} as text: nlohmann-json with JSON",
                f"{ours:.2f} s", f"{theirs:.2f} s", f"{theirs / ours:.2f}", "1")


GRID_FORMS = {"strips": "strips", "tiles": "tiles, deflated", "packed": "strips, deflated"}


def grid_walk():
    program = build / "bin" / "grid_walk"
    for form, words in GRID_FORMS.items():
        file = data / f"grid_{form}.tif"
        # Machines are disturbed for longer than a round: medians of whole runs.
        turns = [run(program, "time", file) for _ in range(TURNS)]

        def middle(figure):
            return statistics.median(map(figure, turns))

        def nanoseconds(key):
            return f"{middle(lambda turn: turn[key]):.1f} ns"

        what = f"grid of 4000 x 4000 ({words}), a node"
        ratio = middle(lambda turn: turn["gdal_nodes"] / turn["rows"])
        add_row(f"{what}: along rows, GDAL node by node", nanoseconds("rows"),
                nanoseconds("gdal_nodes"), f"{ratio:.1f}", "4, aim 8")
        more = middle(lambda turn: turn["rows"] - turn["gdal_blocks"])
        add_row(f"{what}: along rows, GDAL block by block", nanoseconds("rows"),
                nanoseconds("gdal_blocks"), f"+{more:.1f} ns", "at most +8 ns")
        ratio = middle(lambda turn: turn["columns"] / turn["rows"])
        add_row(f"{what}: down columns, along rows", nanoseconds("columns"), nanoseconds("rows"),
                f"{ratio:.2f}", "at most 3")
        peak = run(program, "peak", file, samples / "grid" / "n43.tif")
        add_row(f"{what}: memory of walks in both orders", f"{peak['both_mb']:.0f} MB", "", "",
                "at most 64 MB")


def main():
    for measure in (guard, walk_vs_gdal, csv_vs_pandas, omf_first_value, large_walk, small_reads,
                    texts_in_a_table, values_as_text, grid_walk):
        print(measure.__name__, file=sys.stderr)
        measure()
    print("| What | Here | Peer, or memory | Ratio | Goal |\n|---|---|---|---|---|")
    for row in table:
        print("| " + " | ".join(row) + " |")


if __name__ == "__main__":
    main()
