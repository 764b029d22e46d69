#!/usr/bin/env bash
# Measures the library against what people would use instead and prints a table of
# ratios. Takes about 1.4 GB under build/bench-data; the files are made once.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/steps.sh"

scripts/setup.sh --bench
build_preset bench

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

# Rasters in the three forms that grid_walk knows.
for form in strips tiles packed; do
    made=$data/grid_$form.tif
    [ -f "$made" ] && continue
    step "Make $made" build/bench/bin/grid_walk make "$made.part" "$form" 4000
    mv "$made.part" "$made"
done

# Debian's own Python, since that is the one that has Debian's pandas.
/usr/bin/python3 bench/compare.py build/bench "$data" samples
