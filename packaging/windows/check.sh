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
end_server() { wineserver -k >/dev/null 2>&1 || true; sleep 1; }
trap end_server EXIT
# A server tells all that it holds when it is ended, which nobody wants to read.
new_server() { end_server; wineserver 2>/dev/null; }

step() { echo "== $*"; }
fail() { echo "$*" >&2; exit 1; }
# A path as programs under wine have it.
drive() { local path="Z:${1//\//\\}"; echo "$path"; }
# Programs of the build find their libraries where those were built. What is installed has its own.
libraries=$(drive "$ORVIA_WINDOWS_PREFIX/bin")
for folder in "$@"; do libraries="$libraries;$(drive "$folder")"; done
built() { WINEPATH=$libraries timeout "$patience" wine64 "$@"; }
patience=1200  # seconds

step "a new wine"
wine64 wineboot -i 2>/dev/null
wineserver -w
# Plain letters without feet, as on the system itself, by the fonts that are here.
for font in "MS Shell Dlg" "MS Shell Dlg 2" "MS Sans Serif" "Segoe UI" Tahoma; do
    wine64 reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d "DejaVu Sans" /f >/dev/null
done
cp /usr/share/fonts/truetype/dejavu/DejaVuSans{,-Bold}.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
# What falls says where, and asks nobody.
wine64 reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null
new_server

files() { (cd "$WINEPREFIX/drive_c" && find . -type f | LC_ALL=C sort); }
has_key() { wine64 reg query "$1" >/dev/null 2>&1; }
value_of() { wine64 reg query "$1" /v "$2" 2>/dev/null | tr -d '\r' | sed -n "s/^ *$2 *REG_SZ *//p"; }
# The desktop's own files come by and by.
files >"$build/files.before"
classes='HKCU\Software\Classes'
keys='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvia'
wine64 reg add "$classes\\.set" /ve /d Another.Program /f >/dev/null

step "silent installation"
wine64 "$setup" /S /CurrentUser
program=$(find "$WINEPREFIX/drive_c/users" -name orvia.exe)
[ -n "$program" ] || fail "nothing was installed"
folder=$(dirname "$program")
echo "$(find "$folder" -type f | wc -l) files, $(du -sh "$folder" | cut -f1), in $folder"
for file in orvia.exe uninstall.exe Orvia.chm flumes.lst platforms/qwindows.dll sqldrivers/qsqlite.dll; do
    [ -s "$folder/$file" ] || fail "$file is missing"
done
for value in DisplayName DisplayVersion Publisher UninstallString QuietUninstallString; do
    [ -n "$(value_of "$keys" $value)" ] || fail "the list of programs has no $value"
done
[ "$(value_of "$keys" DisplayVersion)" = "$("$root/tools/version.py")" ] || fail "the list of programs has another version"
link=$(find "$WINEPREFIX/drive_c" -name Orvia.lnk)
[ -n "$link" ] || fail "the menu has no Orvia"
has_key "$classes\\Orvia.AddressBook" || fail ".obk has no name"
wine64 reg query "$classes\\.set" /ve | grep -q Another.Program || fail "another program's .set was taken"
x86_64-w64-mingw32-windres -J coff -i "$program" -O rc 2>/dev/null >"$build/resources.rc"
for words in "\"FileVersion\", \"$("$root/tools/version.py")" '"CompanyName", "Orvia maintainers' \
    '>UTF-8<' 'PerMonitorV2' '<longPathAware.*true'; do
    grep -qa -- "$words" "$build/resources.rc" "$program" || fail "the program does not say $words"
done

step "an upgrade while the console runs"
wine64 "$program" &
console=$!
sleep 10
kill -0 $console || fail "the installed console does not stay"
files >"$build/files.running"
status=0
wine64 "$setup" /S /CurrentUser || status=$?
[ $status -eq 3 ] || fail "the upgrade ended with $status"
files | diff "$build/files.running" - || fail "the refused upgrade touched files"
status=0
wine64 "$folder/uninstall.exe" /S /CurrentUser || status=$?
sleep 3
[ -e "$program" ] || fail "the console was taken away while it ran"
wine64 taskkill /f /im orvia.exe >/dev/null
wait $console || true
wine64 "$setup" /S /CurrentUser

step "a folder with a blank, and another one after it"
for name in "My Programs" "Other Programs"; do
    # The folder comes without quotes, so blanks are between words for wine.
    # shellcheck disable=SC2086
    wine64 "$setup" /S /CurrentUser /D=C:\\$name\\Orvia two
    [ "$(find "$WINEPREFIX/drive_c" -name orvia.exe)" = "$WINEPREFIX/drive_c/$name/Orvia two/orvia.exe" ] ||
        fail "not installed in $name, or the older version stayed"
done
take_away() { # FOLDER
    wine64 "$1/uninstall.exe" /CurrentUser /S
    for _ in $(seq 30); do
        [ -e "$1/uninstall.exe" ] || return 0
        sleep 1
    done
    fail "the console is not taken away from $1"
}
take_away "$WINEPREFIX/drive_c/Other Programs/Orvia two"
wine64 "$setup" /S /CurrentUser
[ -e "$program" ] || fail "not installed in the usual folder again"

step "tests"
# Whether a page is right is seen by programs of this system, and how quick a form is without wine.
elsewhere=ReportPagesTest.*:ReportPrintTest.*
elsewhere+=:SetupForm.OpensTurnsAndValidatesAtOnce:LargeBookTest.*:MainWindowTest.ABookOfTenThousandIsListedQuickly
elsewhere+=:FrmCollectUnderClicks.*
cd "$build/bin"
for tests in *_tests.exe; do
    # They draw with the pointer, which nobody moves here as Windows would.
    [ "$tests" != desktop_tests.exe ] || continue
    echo "-- $tests"
    built "$tests" --gtest_brief=1 --gtest_filter="-$elsewhere" </dev/null
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
built orvia-windows-ports.exe | tr -d '\r' >"$build/ports.txt"
diff "$build/ports.expected" "$build/ports.txt"

step "the port"
ports=$WINEPREFIX/ports
mkdir -p "$ports"
for number in 1 2; do
    wine64 reg add 'HKLM\Software\Wine\Ports' /v "COM$number" /d "$ports/com$number" /f >/dev/null
done
# The server maps ports when it starts, and is told by a terminal that hangs up, upon which it says a lot.
new_server
"$here/echo_port.py" "$ports/com1" >/dev/null &
sleep 1
LD_PRELOAD=$ORVIA_PTYMODEM built orvia-windows-line.exe >"$build/line.txt" 2>/dev/null ||
    { cat "$build/line.txt"; fail "the port is not right"; }
grep -v "a reply is what was sent" "$build/line.txt"
new_server
"$here/echo_port.py" "$ports/com1" >/dev/null &
echo=$!
sleep 1
LD_PRELOAD=$ORVIA_PTYMODEM built orvia-windows-port.exe 2>/dev/null || fail "the port is not right in the toolkit's loop"
kill $echo
new_server

# Begins to start simulators, for programs that may have the numbers of those that ended.
open_post() {
    post=$WINEPREFIX/post-$1
    mkdir "$post"
    mkfifo "$post/open"
    "$here/sim_post.py" "$post" "$simulator" "$ports" <"$post/open" &
    exec 3>"$post/open"
}

step "the tour, on a heap that writes over what is given back"
wine64 reg add 'HKLM\System\CurrentControlSet\Control\Session Manager' /v GlobalFlag /t REG_DWORD /d 0x70 /f >/dev/null
new_server
open_post tour
patience=3000
LD_PRELOAD=$ORVIA_PTYMODEM built orvia-tour.exe --simulator "$(drive "$post")" \
    --data "$(drive "$root/data/demo")" --screenshots "$(drive "$shots")"
exec 3>&-

# What tests leave is not the console's.
rm -rf "$WINEPREFIX"/drive_c/users/*/Temp/*

step "the installed console takes a walk"
wine64 reg delete 'HKCU\Software\Orvia' /f >/dev/null
# wine hands on no variable of the toolkit's, but those of its registry.
for variable in "QT_PLUGIN_PATH $(drive "$build/guide")" "QT_QPA_GENERIC_PLUGINS orviaguide"; do
    wine64 reg add 'HKCU\Environment' /v "${variable%% *}" /d "${variable#* }" /f >/dev/null
done
new_server
open_post walk
LD_PRELOAD=$ORVIA_PTYMODEM ORVIA_GUIDE_POST=$(drive "$post") ORVIA_GUIDE_PRACTICE=$(drive "$root/data/demo") \
    ORVIA_GUIDE_PICTURES=$(drive "$shots") ORVIA_GUIDE_LOG=$(drive "$build/walk.txt") timeout 600 wine64 "$program" || true
cat "$build/walk.txt"
for variable in QT_PLUGIN_PATH QT_QPA_GENERIC_PLUGINS; do
    wine64 reg delete 'HKCU\Environment' /v $variable /f >/dev/null
done
grep -q "The console did all of it" "$build/walk.txt" || fail "the walk did not end"
exec 3>&-

step "screens of 100, 150 and 200 %"
# Where the walk left it, a window of larger letters would not be seen whole.
wine64 reg delete 'HKCU\Software\Orvia\Orvia\Windows' /f >/dev/null
for percent in 100 150 200; do
    wine64 reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d $((96 * percent / 100)) /f >/dev/null
    new_server
    wine64 "$program" &
    # The picture of the start has gone by then, also on a busy machine.
    sleep 40
    import -window root "$shots/screen-$percent.png"
    wine64 taskkill /f /im orvia.exe >/dev/null
    wait $! || true
done

step "silent removal"
echo "1,2" >"$folder/mine.csv"
take_away "$folder"
# The copy of itself from which it ran goes when the system starts next.
wine64 wineboot -r 2>/dev/null
wineserver -w
# What wine's own desktop keeps is not the console's.
files | LC_ALL=C comm -13 "$build/files.before" - | grep -v '^\./windows/' >"$build/files.left" || true
own=".${folder#"$WINEPREFIX/drive_c"}/mine.csv"
left=$(grep -vxF "$own" "$build/files.left" | grep -v "^\./users/[^/]*/AppData/Roaming/Orvia/\|^\./users/[^/]*/Grün 東/" || true)
[ -z "$left" ] || fail "what stayed: $left"
grep -qxF "$own" "$build/files.left" || fail "the operator's file is gone"
for key in "$keys" "$classes\\Orvia.AddressBook" "$classes\\Orvia.Setup" "$classes\\.obk"; do
    ! has_key "$key" || fail "the registry still has $key"
done
wine64 reg query "$classes\\.set" /ve | grep -q Another.Program || fail "another program's .set is gone"
has_key 'HKCU\Software\Orvia' || fail "the operator's settings are gone"
echo "nothing but the operator's files stayed: $(wc -l <"$build/files.left")"
