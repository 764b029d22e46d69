#!/usr/bin/env bash
# Builds and runs every test. Uses the debug build: asserts and the standard
# library's own checks are on, and it is the quickest to build after a change.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/steps.sh"

scripts/setup.sh
build_preset dev
test_preset dev
