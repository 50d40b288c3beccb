#!/usr/bin/env bash
# Installs what is missing, builds with sanitizers and runs every test. The layout of all files, the
# static checks of the logic and the fuzzers, for some seconds each, are tests too; tools/tidy.sh
# checks the rest. Exits non-zero on any failure.
set -euo pipefail
cd "$(dirname "$0")"
tools/install.sh
cmake --preset asan
cmake --build --preset asan
ctest --preset asan "$@"
