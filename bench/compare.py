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


MESHES = {
    "pit_100k": "pit of 100,000 triangles",
    "ore_100k": "steep ore body of 100,000",
    "pit_1m": "pit of 1 million",
    "ore_1m": "steep ore body of 1 million",
}
HAS_CGAL = (build / "bin" / "mesh_cgal").exists()


def best_of_each(commands):
    """Runs the commands in turns; of each figure of each command, the least."""
    turns = [[run(*command) for command in commands] for _ in range(TURNS)]
    return [{key: min(turn[i][key] for turn in turns) for key in turns[0][i]}
            for i in range(len(commands))]


def mesh_ask(*arguments):
    return (build / "bin" / "mesh_ask", *arguments)


def mesh_cgal(*arguments):
    return (build / "bin" / "mesh_cgal", *arguments)


def mesh_read():
    program = build / "bin" / "mesh_read"
    for name, what, goal in (("pit_1m.obj", "OBJ of 1 million triangles", "4"),
                             ("pit_1m.stl", "the same as binary STL, points merged", "3")):
        file = data / name
        peers = {"assimp": (program, "assimp", file), "VTK": (program, "vtk", file)}
        if HAS_CGAL:
            peers["CGAL"] = mesh_cgal("read", file)
        ours, *theirs = best_of_each([(program, "zol", file), *peers.values()])
        if ours["triangles"] != theirs[0]["triangles"]:
            sys.exit(f"compare.py: not as many triangles of {name} as {next(iter(peers))} reads")
        for peer, figures in zip(peers, theirs):
            add_row(f"{what}: {peer}", f"{ours['read_s']:.3f} s", f"{figures['read_s']:.3f} s",
                    f"{figures['read_s'] / ours['read_s']:.1f}", goal)
            add_row(f"{what}: {peer}, peak memory", f"{ours['peak_mb']:.0f} MB",
                    f"{figures['peak_mb']:.0f} MB",
                    f"{figures['peak_mb'] / ours['peak_mb']:.1f}")


def mesh_inside():
    for name, what in MESHES.items():
        file = data / f"{name}.obj"
        peers = {"Embree": (mesh_ask("embree", "inside", file), "at least 0.67")}
        if HAS_CGAL:
            peers["CGAL"] = (mesh_cgal("inside", file), "10")
        commands = [command for command, _ in peers.values()]
        ours, *theirs = best_of_each([mesh_ask("zol", "inside", file), *commands])
        for (peer, (_, goal)), figures in zip(peers.items(), theirs):
            if peer == "CGAL" and figures["which"] != ours["which"]:
                sys.exit(f"compare.py: other points of {name} are inside than CGAL says")
            for key, where in (("anywhere_us", "anywhere"), ("near_us", "a micrometre off")):
                add_row(f"{what}, a point {where}, inside or not: {peer}",
                        f"{ours[key] * 1000:.0f} ns", f"{figures[key] * 1000:.0f} ns",
                        f"{figures[key] / ours[key]:.1f}", goal)
            add_row(f"{what}, a micrometre off, wrong of 1 million: {peer}", f"{ours['wrong']}",
                    f"{figures['wrong']}", "", "0")
            add_row(f"{what}, the first point after reading: {peer}", f"{ours['first_s']:.3f} s",
                    f"{figures['first_s']:.3f} s", f"{figures['first_s'] / ours['first_s']:.1f}")


def mesh_questions():
    for name, what in MESHES.items():
        file = data / f"{name}.obj"
        asked = [mesh_ask("zol", question, file)
                 for question in ("crossing", "consistent", "volume")]
        if not HAS_CGAL:
            crossing, consistent, volume = best_of_each(asked)
            add_row(f"{what}, crossing itself", f"{crossing['seconds']:.3f} s", "")
            add_row(f"{what}, closed and consistent", f"{consistent['seconds']:.4f} s", "")
        else:
            asked += [mesh_cgal(question, file) for question in ("crossing", "edges", "volume")]
            crossing, consistent, volume, *theirs = best_of_each(asked)
            rows = (("crossing itself", crossing, theirs[0], "4" if "100k" in name else "8"),
                    ("closed and consistent", consistent, theirs[1], "20"),
                    ("volume, edges known", volume, theirs[2], ""))
            for question, ours, cgal, goal in rows:
                add_row(f"{what}, {question}: CGAL", f"{ours['seconds'] * 1000:.1f} ms",
                        f"{cgal['seconds'] * 1000:.1f} ms",
                        f"{cgal['seconds'] / ours['seconds']:.1f}", goal)
        add_row(f"{what}, volume: relative error", f"{volume['error']:.1g}",
                f"{theirs[2]['error']:.1g}" if HAS_CGAL else "", "", "1e-13")


def match_blocks():
    program = build / "bin" / "match_blocks"
    for name, what in MESHES.items():
        file = data / f"{name}.obj"
        ours, exact, lone, columns, points = best_of_each(
            [(program, word, file, "1e7") for word in ("centres", "exact", "lone", "columns",
                                                       "points")])
        if abs(ours["inside"] - columns["inside"]) > 1e-4 * ours["blocks"]:
            sys.exit(f"compare.py: Embree finds other blocks in {name}")
        ns = f"{ours['block_ns']:.2f} ns"
        for peer, figures, goal in (("Embree, a ray a block", points, "50, aim 150"),
                                    ("Embree, a ray a column", columns, "1, aim 3")):
            add_row(f"10 M blocks in the {what}, a block by its centre: {peer}", ns,
                    f"{figures['block_ns']:.2f} ns", f"{figures['block_ns'] / ours['block_ns']:.1f}",
                    goal)
        add_row(f"the same, volumes: of {exact['partial']} blocks that it cuts, each",
                f"{exact['partial_us']:.2f} us", "", "", "at most 2 us")
        add_row("the same, what is prepared once", f"{exact['prepare_s']:.2f} s", "")
        add_row("the same, sum over all blocks: relative error", f"{exact['error']:.1g}", "", "",
                "1e-12")
        add_row("the same, a lone box", f"{lone['box_us']:.1f} us", "", "", "at most 20 us")
    for blocks in ("1e5", "1e6", "1e7", "1e8"):
        model = data / f"lattice_{blocks}.omf"
        run_flat = run(program, "flat", model, data / "pit_100k.obj", "centres")
        add_row(f"{run_flat['blocks']} blocks, the pit of 100,000, walked through the flat library",
                f"{run_flat['seconds']:.3f} s, first block after {run_flat['first_s']:.3f} s",
                f"{run_flat['peak_mb']:.0f} MB")
    for triangles in (1000, 10_000, 100_000, 1_000_000):
        ours = run(program, "centres", data / PIT_OF[triangles], "1e7")
        add_row(f"10 M blocks, pit of {triangles} triangles, a block by its centre",
                f"{ours['block_ns']:.2f} ns", "")


PIT_OF = {1000: "pit_1k.obj", 10_000: "pit_10k.obj", 100_000: "pit_100k.obj",
          1_000_000: "pit_1m.obj"}


def designs():
    program = build / "bin" / "design_read"
    file = data / "mine_200.dxf"
    ours, gdal = best_of_each([(program, "zol", file), (program, "gdal", file)])
    if ours["objects"] != gdal["objects"]:
        sys.exit("compare.py: not as many objects of the drawing as GDAL reads")
    what = "DXF of 200 MB"
    add_row(f"{what}, opened, which reads it: GDAL, feature by feature", f"{ours['open_s']:.2f} s",
            f"{gdal['read_s']:.2f} s", f"{gdal['read_s'] / ours['open_s']:.1f}", "3")
    add_row(f"{what}, every object asked for its points, too: GDAL", f"{ours['read_s']:.2f} s",
            f"{gdal['read_s']:.2f} s", f"{gdal['read_s'] / ours['read_s']:.1f}", "3")
    held = ours["points"] * 24 / 1e6
    add_row(f"{what}: peak memory, points that it holds", f"{ours['peak_mb']:.0f} MB",
            f"{held:.0f} MB", f"{ours['peak_mb'] / held:.2f}", "at most 1.5")
    file = data / "mine_20.dxf"
    ours, ezdxf = best_of_each([(program, "zol", file),
                                ("/usr/bin/python3", HERE / "read_ezdxf.py", file)])
    add_row("DXF of 20 MB, with every object: ezdxf", f"{ours['read_s']:.3f} s",
            f"{ezdxf['read_s']:.2f} s", f"{ezdxf['read_s'] / ours['read_s']:.0f}", "20")
    program = build / "bin" / "design_walk"
    walk = run(program, "points", data / "mine_points.dxf")
    add_row("a point of a polyline of 1 million", f"{walk['point_ns']:.0f} ns", "", "",
            "at most 100 ns")
    layers = run(program, "layers", data / "mine_layers.dxf")
    add_row("10,000 layers, 1,000 names by index", f"{layers['thousand_ms']:.1f} ms", "", "",
            "at most 50 ms")


def main():
    for measure in (guard, walk_vs_gdal, csv_vs_pandas, omf_first_value, large_walk, small_reads,
                    texts_in_a_table, values_as_text, grid_walk, mesh_read, mesh_inside,
                    mesh_questions, match_blocks, designs):
        print(measure.__name__, file=sys.stderr)
        measure()
    print("| What | Here | Peer, or memory | Ratio | Goal |\n|---|---|---|---|---|")
    for row in table:
        print("| " + " | ".join(row) + " |")


if __name__ == "__main__":
    main()
