#!/usr/bin/env bash
# Shows the console on a simulated field site. With a display it opens the console on it, to be used;
# without one, or with --tour, it takes a tour by itself, prints what each step read, leaves
# screenshots in screenshots/, and exits non-zero if anything is not as the simulator answered.
set -euo pipefail
cd "$(dirname "$0")"
tools/install.sh
cmake --preset release >/dev/null
cmake --build --preset release --target orvia orvia-sim orvia-tour manual
bin=build/release/bin

if [ "${1:-}" = "--tour" ] || [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    QT_QPA_PLATFORM=offscreen "$bin/orvia-tour" --simulator "$bin/orvia-sim" --data data/demo \
        --screenshots screenshots
    echo "screenshots are in screenshots/"
    exit 0
fi

# Settings of its own, so that those of a real site stay as they are.
ORVIA_PROGRAMS=$bin ORVIA_PRACTICE=data/demo exec packaging/orvia-training --trace
