#!/usr/bin/env bash
# Measures the library against what people would use instead and prints a table of
# ratios. Takes about 1.9 GB under build/bench-data; the files are made once.
#
#   bench/run.sh [--gpl-peers]    also beside libraries under the GPL
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/steps.sh"

case ${1:-} in
    "")
        scripts/setup.sh --bench
        gpl_peers=OFF
        ;;
    --gpl-peers)
        scripts/setup.sh --bench --gpl-peers
        gpl_peers=ON
        ;;
    *)
        echo "usage: bench/run.sh [--gpl-peers]" >&2
        exit 2
        ;;
esac
step "Configure bench" cmake --preset bench -DZOL_BENCH_GPL_PEERS=$gpl_peers
step "Build bench" cmake --build --preset bench

data=build/bench-data
mkdir -p "$data"
# make FILE GENERATOR ARGUMENT: a file that was begun and not ended is made again.
make() {
    local made=$data/$1
    [ -f "$made" ] && return
    step "Make $made" /usr/bin/python3 "bench/$2" "$made.part" "$3"
    mv "$made.part" "$made"
}
make small.csv make_csv.py 1000000
make csv.csv make_csv.py 5000000
make large.csv make_csv.py 10000000
make volume.omf make_omf.py 6
make mine_200.dxf make_dxf.py 200
make mine_20.dxf make_dxf.py 20
make mine_points.dxf make_dxf.py points
make mine_layers.dxf make_dxf.py layers

# Rasters in the three forms that grid_walk knows.
for form in strips tiles packed; do
    made=$data/grid_$form.tif
    [ -f "$made" ] && continue
    step "Make $made" build/bench/bin/grid_walk make "$made.part" "$form" 4000
    mv "$made.part" "$made"
done

# Solids at the coordinates of a survey.
for name in pit_1k.obj pit_10k.obj pit_100k.obj ore_100k.obj pit_1m.obj ore_1m.obj pit_1m.stl; do
    made=$data/$name
    [ -f "$made" ] && continue
    case $name in
        *_1k*) triangles=1000 ;;
        *_10k*) triangles=10000 ;;
        *_100k*) triangles=100000 ;;
        *) triangles=1000000 ;;
    esac
    # The name tells the form, so the part of a file keeps its end.
    step "Make $made" build/bench/bin/mesh_make "$data/part_$name" "${name%%_*}" $triangles
    mv "$data/part_$name" "$made"
done

# Blocks over the box of a pit.
for blocks in 1e5 1e6 1e7 1e8; do
    made=$data/lattice_$blocks.omf
    [ -f "$made" ] && continue
    step "Make $made" /usr/bin/python3 bench/make_lattice.py "$made.part" "$data/pit_100k.obj" $blocks
    mv "$made.part" "$made"
done

# Debian's own Python, since that is the one that has Debian's pandas.
/usr/bin/python3 bench/compare.py build/bench "$data" samples
