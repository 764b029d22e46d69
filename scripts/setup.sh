#!/usr/bin/env bash
# Installs what this project is built from, as packages of Debian 12. Asks for
# nothing, changes nothing when all of it is there, and uses sudo only when it is
# not run as root.
set -euo pipefail

base=(g++ cmake ninja-build ccache pkg-config python3 binutils
    libgtest-dev libgmock-dev libcli11-dev rapidjson-dev libdeflate-dev libfast-float-dev
    zlib1g-dev libboost-dev nettle-dev libsqlite3-dev libcairo2-dev fonts-dejavu-core libgdal-dev locales)
lint=(clang-format clang-tidy)
bench=(libbenchmark-dev nlohmann-json3-dev python3-pandas python3-numpy python3-ezdxf
    libassimp-dev libembree-dev libvtk9-dev)
gpl_peers=(libcgal-dev)

usage() {
    cat <<TEXT
usage: scripts/setup.sh [--lint] [--bench] [--gpl-peers]
Installs what the build and the tests need; --lint adds the layout and lint tools,
--bench what the benchmarks compare with, --gpl-peers what of that is under the GPL.
TEXT
}

wanted=("${base[@]}")
for option in "$@"; do
    case $option in
        --lint) wanted+=("${lint[@]}") ;;
        --bench) wanted+=("${bench[@]}") ;;
        --gpl-peers) wanted+=("${gpl_peers[@]}") ;;
        -h | --help)
            usage
            exit 0
            ;;
        *)
            usage >&2
            exit 2
            ;;
    esac
done

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "setup.sh: this system has no apt-get. Install by its own means what Debian calls:" >&2
    echo "  ${wanted[*]}" >&2
    exit 1
fi

missing=()
for package in "${wanted[@]}"; do
    state=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "setup.sh: neither root nor sudo. Let an administrator run:" >&2
        echo "  apt-get install ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing ${missing[*]}"
install_missing() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}"
}
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# A fresh machine has no list of packages yet, an old one may have a stale list.
if ! { "${as_root[@]}" apt-get update -q && install_missing; } >"$log" 2>&1; then
    tail -n 30 "$log" >&2
    echo "setup.sh: the packages above could not be installed; Debian 12 has all of them." >&2
    exit 1
fi
