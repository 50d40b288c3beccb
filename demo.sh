#!/usr/bin/env bash
# Shows the console on a simulated field site. With a display it opens the console on it, to be used;
# without one, or with --tour, it takes a tour by itself, prints what each step read, leaves
# screenshots in screenshots/, and exits non-zero if anything is not as the simulator answered.
set -euo pipefail
cd "$(dirname "$0")"
tools/install.sh
cmake --preset release >/dev/null
cmake --build --preset release --target orvia orvia-sim orvia-tour
bin=build/release/bin

if [ "${1:-}" = "--tour" ] || [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    QT_QPA_PLATFORM=offscreen "$bin/orvia-tour" --simulator "$bin/orvia-sim" --data data/demo \
        --screenshots screenshots
    echo "screenshots are in screenshots/"
    exit 0
fi

# A home of its own, so that the settings of a real site stay as they are.
home=$(mktemp -d)
simulator=
leave() {
    [ -z "$simulator" ] || kill "$simulator" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$home"
}
trap leave EXIT
mkdir -p "$home/Orvia/ports"
cp data/demo/site.obk "$home/site.obk"
cat >"$home/Orvia/Orvia.conf" <<CONF
[Configuration]
Port=COM1
Baud=38400
AddressBook=$home/site.obk
CONF
# The console opens its port as it starts, so the simulator has to be ready by then.
mkfifo "$home/trace"
"$bin/orvia-sim" data/demo/site.net --link "$home/Orvia/ports/COM1" --trace >"$home/trace" &
simulator=$!
exec {trace}<"$home/trace"
line=
while [[ $line != ready:* ]]; do
    IFS= read -r line <&"$trace" || { echo "the simulator did not start" >&2; exit 1; }
    printf '%s\n' "$line"
done
cat <&"$trace" &
XDG_CONFIG_HOME=$home XDG_DATA_HOME=$home "$bin/orvia"
