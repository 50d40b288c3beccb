#!/usr/bin/env bash
# Builds the fuzz targets and runs each for the given number of seconds (10) over its seeds. What a
# run finds is left in build/fuzz/found; add it to fuzz/corpus once mended, and it is tried for good.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-10}
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
mkdir -p build/fuzz/found
for program in build/fuzz/bin/fuzz_*; do
    name=$(basename "$program")
    work=build/fuzz/work/$name
    log=build/fuzz/$name.log
    mkdir -p "$work"
    echo "== $name, $seconds s"
    if ! "$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -print_final_stats=1 \
        -artifact_prefix="build/fuzz/found/$name-" "$work" "fuzz/corpus/${name#fuzz_}" \
        >"$log" 2>&1; then
        tail -40 "$log"
        exit 1
    fi
    grep -E "number_of_executed_units" "$log"
done
echo "every fuzz target ran clean"
