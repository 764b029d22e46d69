#!/usr/bin/env bash
# From a fresh clone to what is in real block models, meshes and grids, in one command.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/steps.sh"

scripts/setup.sh
build_preset release

# What is shown is what a person would type.
export PATH=$PWD/build/release/bin:$PATH
show() {
    printf '\n$ %s\n' "$*"
    "$@"
}

show zol info samples/blocks/estimate_regular.csv
show zol blocks samples/blocks/estimate_regular.csv --first 5
show zol at samples/blocks/estimate_regular.csv --world 106 4 58
show zol info samples/blocks/made_subblocked.csv
show zol blocks samples/omf/test_file.omf --first 5
show zol mesh info samples/tri/Mpz_ore_unit.stl
show zol mesh info samples/tri/gebco_coastal.stl
show zol mesh contains samples/tri/ballA.off 0 0 0
show zol grid info samples/grid/n43.tif
show zol grid at samples/grid/n43.tif -79.402 43.658
show zol grid plot samples/grid/warp_52_dem.tif -o build/relief.png
echo "The relief is in build/relief.png."

# The example is a project of its own, built against an installed copy.
copy=$PWD/build/demo
echo
step "Install to build/demo" cmake --install build/release --prefix "$copy"
step "Configure the example" cmake -S examples -B build/examples -G Ninja -DCMAKE_PREFIX_PATH="$copy"
step "Build the example" cmake --build build/examples
PATH=$PWD/build/examples:$PATH
show first_call samples/blocks/estimate_regular.csv
