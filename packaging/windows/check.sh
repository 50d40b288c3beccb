#!/usr/bin/env bash
# Tries an installer under wine, in a prefix made for it: installs without a word, runs the tests of the
# logic and those of the forms that need nothing of another system, takes the tour of the console against
# the simulator of this machine, and takes the console away again.
#
#   check.sh SETUP.exe BUILD SIMULATOR [FOLDER...]
#
# BUILD is where the programs of the tests were built, FOLDERS hold libraries of the compiler. Pictures go
# to BUILD/shots.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
if [ "${1:-}" != --inside ]; then
    build=$2
    prefix=$build/wine
    [ ! -e "$prefix" ] || rm -rf "$prefix"
    exec xvfb-run -a -s "-screen 0 2560x1600x24" "$here/winebox.sh" "$prefix" "$0" --inside "$@"
fi
setup=$(realpath "$2") build=$(realpath "$3") simulator=$(realpath "$4")
shift 4
root=$(realpath "$here/../..")
shots=$build/shots
rm -rf "$shots"
mkdir -p "$shots"
export LC_ALL=C.UTF-8
# The server tells all that it holds when it is ended.
end_server() { wineserver -k >/dev/null 2>&1 || true; sleep 1; }
trap end_server EXIT

step() { echo "== $*"; }
fail() { echo "$*" >&2; exit 1; }
# A path as programs under wine have it.
drive() { local path="Z:${1//\//\\}"; echo "$path"; }
WINEPATH=$(drive "$ORVIA_WINDOWS_PREFIX/bin")
for folder in "$@"; do WINEPATH="$WINEPATH;$(drive "$folder")"; done
export WINEPATH
export QT_PLUGIN_PATH; QT_PLUGIN_PATH=$(drive "$ORVIA_WINDOWS_PREFIX/plugins")

step "a new wine"
wine64 wineboot -i
wineserver -w
# Plain letters without feet, as on the system itself, by the fonts that are here.
for font in "MS Shell Dlg" "MS Shell Dlg 2" "MS Sans Serif" "Segoe UI" Tahoma; do
    wine64 reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d "DejaVu Sans" /f >/dev/null
done

step "silent installation"
installed() { find "$WINEPREFIX/drive_c" -ipath '*/orvia/*' -type f | sort; }
wine64 "$setup" /S /CurrentUser
program=$(find "$WINEPREFIX/drive_c/users" -name orvia.exe)
[ -n "$program" ] || fail "nothing was installed"
folder=$(dirname "$program")
echo "$(installed | wc -l) files in $folder"
keys='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvia'
wine64 reg query "$keys" | tr -d '\r' >"$build/uninstall.txt"
for value in DisplayName DisplayVersion Publisher UninstallString QuietUninstallString; do
    grep -qw "$value" "$build/uninstall.txt" || fail "the list of programs has no $value"
done

step "an upgrade while the console runs"
wine64 "$program" &
console=$!
sleep 10
kill -0 $console || fail "the installed console does not stay"
status=0
wine64 "$setup" /S /CurrentUser || status=$?
[ $status -eq 3 ] || fail "the upgrade ended with $status"
wine64 taskkill /f /im orvia.exe >/dev/null
wait $console || true
wine64 "$setup" /S /CurrentUser

step "tests"
cd "$build/bin"
for tests in *_tests.exe; do
    case $tests in
        forms_tests.exe | desktop_tests.exe) continue ;;
        simulator_tests.exe) continue ;;
    esac
    echo "-- $tests"
    wine64 "$tests" --gtest_brief=1 </dev/null
done

step "list of ports, from a registry like a machine's"
enum='HKLM\SYSTEM\CurrentControlSet\Enum\FTDIBUS'
class='HKLM\SYSTEM\CurrentControlSet\Control\Class'
add() { wine64 reg add "$1" /v "$2" /d "$3" /f >/dev/null; }
add "$enum\\VID_0403+PID_6001+A5XK3RJTA\\0000" FriendlyName "USB Serial Port (COM5)"
add "$enum\\VID_0403+PID_6001+A5XK3RJTA\\0000\\Device Parameters" PortName COM5
add "$enum\\VID_0403+PID_6015+DK0BVZ2GA\\0000" FriendlyName "Grünes Funkgerät (COM12)"
add "$enum\\VID_0403+PID_6015+DK0BVZ2GA\\0000\\Device Parameters" PortName COM12
add "$enum\\VID_0403+PID_6015+NOPORT\\0000" FriendlyName "Half installed"
add "$class\\{4d36e96d-e325-11ce-bfc1-08002be10318}" Class Modem
add "$class\\{4d36e96d-e325-11ce-bfc1-08002be10318}\\0000" FriendlyName "Standard 56000 bps Modem"
add "$class\\{4d36e96d-e325-11ce-bfc1-08002be10318}\\0000" AttachedTo com3
add "$class\\{4d36e978-e325-11ce-bfc1-08002be10318}" Class Ports
add "$class\\{4d36e978-e325-11ce-bfc1-08002be10318}\\0000" FriendlyName "Communications Port"
cat >"$build/ports.expected" <<'LIST'
COM5 - USB Serial Port
COM12 - Grünes Funkgerät
COM3 - Standard 56000 bps Modem
LIST
wine64 orvia-windows-ports.exe | tr -d '\r' >"$build/ports.txt"
diff "$build/ports.expected" "$build/ports.txt"

step "the port"
ports=$WINEPREFIX/ports
mkdir -p "$ports"
for number in 1 2; do
    wine64 reg add 'HKLM\Software\Wine\Ports' /v "COM$number" /d "$ports/com$number" /f >/dev/null
done
# The server maps ports when it starts, and is told by a terminal that hangs up, upon which it says a lot.
end_server
"$here/echo_port.py" "$ports/com1" >/dev/null &
sleep 1
LD_PRELOAD=$ORVIA_PTYMODEM wine64 orvia-windows-line.exe >"$build/line.txt" 2>/dev/null ||
    { cat "$build/line.txt"; fail "the port is not right"; }
grep -v "a reply is what was sent" "$build/line.txt"
end_server

step "the tour"
post=$WINEPREFIX/post
mkdir -p "$post"
mkfifo "$post/open"
"$here/sim_post.py" "$post" "$simulator" "$ports" <"$post/open" &
exec 3>"$post/open"
LD_PRELOAD=$ORVIA_PTYMODEM wine64 orvia-tour.exe --simulator "$(drive "$post")" \
    --data "$(drive "$root/data/demo")" --screenshots "$(drive "$shots")"
exec 3>&-

step "screens of 100, 150 and 200 %"
for percent in 100 150 200; do
    wine64 reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d $((96 * percent / 100)) /f >/dev/null
    end_server
    wine64 "$program" &
    sleep 12
    import -window root "$shots/screen-$percent.png"
    wine64 taskkill /f /im orvia.exe >/dev/null
    wait $! || true
done

step "silent removal"
echo "1,2" >"$folder/mine.csv"
wine64 "$folder/uninstall.exe" /CurrentUser /S
for _ in $(seq 30); do
    [ -e "$folder/uninstall.exe" ] || break
    sleep 1
done
sleep 2
left=$(installed | grep -v '/AppData/Roaming/' || true)
[ "$left" = "$folder/mine.csv" ] || fail "what stayed: $left"
! wine64 reg query "$keys" >/dev/null 2>&1 || fail "the list of programs still has it"
echo "nothing but the operator's file stayed"
