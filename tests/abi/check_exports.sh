#!/bin/sh
# Compares what a library exports with the list in exports.txt beside this script.
# With --refresh, writes the list.
set -eu

here=$(dirname "$0")
expected=$here/exports.txt

exported() {
    nm -D --defined-only "$1" | awk '{ print $3 }' | LC_ALL=C sort
}

if [ "$1" = --refresh ]; then
    exported "$2" > "$expected"
    exit
fi

if ! exported "$1" | diff -u "$expected" -; then
    echo "The exported symbols differ from tests/abi/exports.txt. If that is meant:"
    echo "    tests/abi/check_exports.sh --refresh $1"
    exit 1
fi
