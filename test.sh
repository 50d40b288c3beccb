#!/usr/bin/env bash
# Installs what is missing, builds with sanitizers and runs every test; the checks of layout, of the
# code and the fuzzers run as tests too. Exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")"
tools/install.sh
cmake --preset asan
cmake --build --preset asan
ctest --preset asan "$@"
