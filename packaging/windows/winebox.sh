#!/usr/bin/env bash
# Runs a command in which wine can be used and no serial device of this machine can be reached.
#
#   winebox.sh PREFIX COMMAND [ARGUMENT...]
#
# wine makes a COM port of each /dev/ttyS* by itself whenever its server starts, and opens it: a console
# that connects to COM1 would write to whatever hangs there. So the real devices are hidden, in a mount
# namespace of this command's own, and that they are is looked at before wine is let loose. Ports that
# are wanted stand in wine's registry, HKLM\Software\Wine\Ports, the one place that its server keeps.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
[ $# -ge 2 ] || { sed -n '2,4p' "$0" >&2; exit 2; }
mkdir -p "$1"
WINEPREFIX=$(cd "$1" && pwd)
shift
mkdir -p "$WINEPREFIX/home"
export WINEPREFIX WINEDEBUG=${WINEDEBUG:--all} HOME=$WINEPREFIX/home
# No browser, no runtime of another maker, no entries in this machine's own menus.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=d"
export PATH="$PATH:/usr/lib/wine"

# A pseudo-terminal has no modem lines, without which wine takes the port for gone.
modem=$WINEPREFIX/ptymodem.so
if [ "$modem" -ot "$here/ptymodem.c" ]; then
    gcc -O1 -shared -fPIC -o "$modem" "$here/ptymodem.c" -ldl
fi
export ORVIA_PTYMODEM=$modem

rights=()
[ "$(id -u)" -eq 0 ] || rights=(--map-root-user)
exec unshare --mount --propagation private "${rights[@]}" bash -c '
    shopt -s nullglob
    hidden=0
    for device in /dev/ttyS* /dev/ttyUSB* /dev/ttyACM* /dev/lp* /dev/parport*; do
        mount --bind /dev/null "$device" || exit 90
        if [ "$(stat -c %t:%T "$device")" != 1:3 ]; then
            echo "$device is not hidden" >&2
            exit 91
        fi
        hidden=$((hidden + 1))
    done
    for link in "$WINEPREFIX"/dosdevices/com*; do
        case $(readlink "$link") in /dev/tty*) rm -f "$link" ;; esac
    done
    [ -z "${WINEBOX_VERBOSE:-}" ] || echo "$hidden devices hidden" >&2
    exec "$@"' winebox "$@"
