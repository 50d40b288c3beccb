#!/usr/bin/env bash
# Tries the package in a Debian 12 that was made for it: nothing but the package is installed, the
# console walks there through its first day as a user without rights, and a purge has to leave
# nothing.
#
#   packaging/debian_root_test.sh DEB GUIDE [PICTURES]
#
# GUIDE is the folder of the walk's plugin (guide in the build's folder); what the console showed goes
# to the folder PICTURES. Needs root or sudo, debootstrap, Xvfb. The fresh system is kept in
# ~/.cache/orvia, so that the next time is quicker; ORVIA_MIRROR names another mirror of Debian.
set -euo pipefail
PATH=$PATH:/usr/sbin:/sbin

[ $# -ge 2 ] || { echo "usage: packaging/debian_root_test.sh DEB GUIDE [PICTURES]" >&2; exit 2; }
deb=$(realpath "$1")
guide=$(realpath "$2")
pictures=$(realpath -m "${3:-/nonexistent}")
mirror=${ORVIA_MIRROR:-http://deb.debian.org/debian}
architecture=$(dpkg --print-architecture)
kept=${XDG_CACHE_HOME:-$HOME/.cache}/orvia/bookworm-$architecture.tar

# In rooms of its own for mounts and processes: both are gone with this script, however it ends.
if [ -z "${ORVIA_ROOT_TEST:-}" ]; then
    sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    exec "${sudo[@]}" env ORVIA_ROOT_TEST=1 XDG_CACHE_HOME="${kept%/orvia/*}" \
        ORVIA_MIRROR="$mirror" unshare --mount --pid --fork --kill-child \
        "$0" "$deb" "$guide" "${@:3}"
fi

scratch=$(mktemp -d)
root=$scratch/root
leave() {
    umount --recursive --lazy "$root/proc" "$root/dev/pts" 2>/dev/null || true
    rm -rf --one-file-system "$scratch"
}
trap leave EXIT
wrong() {
    echo "debian_root_test: $*" >&2
    exit 1
}

# ----- a fresh system

if [ ! -f "$kept" ]; then
    echo "-- making a fresh Debian 12"
    mkdir -p "${kept%/*}"
    debootstrap --variant=minbase bookworm "$scratch/base" "$mirror" >"$scratch/log" 2>&1 ||
        { tail -20 "$scratch/log" >&2; wrong "debootstrap failed"; }
    tar --create --numeric-owner --file "$kept.new" -C "$scratch/base" .
    mv "$kept.new" "$kept"
    rm -rf "$scratch/base"
fi
mkdir "$root"
tar --extract --numeric-owner --file "$kept" -C "$root"
cp /etc/resolv.conf "$root/etc/resolv.conf"
mount -t proc proc "$root/proc"
mount --bind /dev/pts "$root/dev/pts"

inside() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}
quietly() {
    inside "$@" >"$scratch/log" 2>&1 || { tail -30 "$scratch/log" >&2; wrong "$* failed"; }
}
# All that lies there, but for what the tools for packages keep for themselves.
listing() {
    (cd "$root" && find . -xdev \( -path ./proc -o -path ./dev -o -path ./tmp -o -path ./home \
        -o -path ./var/cache -o -path ./var/log -o -path ./var/lib/apt -o -path ./var/lib/dpkg \) \
        -prune -o -print | LC_ALL=C sort)
}

quietly apt-get update
quietly useradd --create-home --shell /bin/sh technician
listing >"$scratch/before"

# ----- the package alone

echo "-- apt install"
cp "$deb" "$root/tmp/"
began=$SECONDS
quietly apt-get install --yes "/tmp/${deb##*/}"
grep -q '"dialout"' "$scratch/log" || wrong "the package tells nothing of the group"
folder=$(dirname "$(inside readlink -f /usr/bin/orvia)")
echo "installed in $((SECONDS - began)) s: $(inside dpkg-query --show \
    --showformat='${Installed-Size}' orvia) KB, with $(grep -c '^Setting up' "$scratch/log") packages"

# ----- the first day

user() {
    timeout 300 chroot --userspec=technician:technician --groups= "$root" env -i \
        PATH=/usr/bin:/bin HOME=/home/technician LC_ALL=C.UTF-8 "$@"
}
user test ! -w "$folder" || wrong "$folder can be written"

user mkdir -p /home/technician/Documents /home/technician/pictures \
    /home/technician/.config/Orvia/ports /home/technician/.local/share/Orvia
printf '[MILL] "Mill flume" E 0 1.55 4.1\r\n' |
    user tee /home/technician/.local/share/Orvia/flumes.lst >/dev/null
cp -r "$guide" "$root/tmp/guide"

# A port that belongs to the group, as a true one does.
group=$(inside getent group dialout | cut -d: -f3)
coproc python3 -c "
import os, sys
master, slave = os.openpty()
os.chown(slave, 0, $group)
os.chmod(slave, 0o660)
print(os.ttyname(slave), flush=True)
sys.stdin.read()"
read -r port <&"${COPROC[0]}"
user ln -s "$port" /home/technician/.config/Orvia/ports/COM2

Xvfb -displayfd 3 -screen 0 1280x900x24 -ac -nolisten tcp 2>/dev/null 3>"$scratch/display" &
until [ -s "$scratch/display" ]; do sleep 0.1; done
display=:$(head -1 "$scratch/display")

echo "-- the first day of a user without rights"
status=0
user DISPLAY="$display" QT_QPA_PLATFORM=xcb QT_PLUGIN_PATH=/tmp/guide \
    QT_QPA_GENERIC_PLUGINS=orviaguide ORVIA_GUIDE_FOLDER=/home/technician/Documents \
    ORVIA_GUIDE_DEVICE="Mill flume" ORVIA_GUIDE_FORBIDDEN=COM2 \
    ORVIA_GUIDE_PICTURES=/home/technician/pictures orvia || status=$?
if [ -d "${pictures%/*}" ]; then
    mkdir -p "$pictures"
    cp -r "$root/home/technician/pictures/." "$pictures"
fi
[ "$status" -eq 0 ] || wrong "the console ended with $status"

status=0
user DISPLAY="$display" QT_QPA_PLATFORM=xcb timeout 5 orvia-training || status=$?
[ "$status" -eq 124 ] || wrong "the practice ended by itself, with $status"

# ----- and away again

echo "-- apt purge"
quietly apt-get purge --yes --autoremove orvia
listing >"$scratch/after"
inside dpkg-query --show orvia >/dev/null 2>&1 && wrong "dpkg still knows the package"
# Programs that others suggest stay, as apt sees it. What is new and theirs does not count; nothing else
# may name the console, in its path or in what it holds.
LC_ALL=C comm -13 "$scratch/before" "$scratch/after" >"$scratch/new"
sed 's/^/./' "$root"/var/lib/dpkg/info/*.list | LC_ALL=C sort -u >"$scratch/owned"
LC_ALL=C comm -23 "$scratch/new" "$scratch/owned" >"$scratch/strange"
echo "$(wc -l <"$scratch/strange") new files that belong to no package, $(comm -23 \
    "$scratch/before" "$scratch/after" | wc -l) gone"
grep -i orvia "$scratch/after" && wrong "the purge leaves these"
traces=$(cd "$root" && while read -r file; do [ ! -f "$file" ] || printf '%s\0' "$file"; done \
    <"$scratch/after" | xargs -0 grep -il orvia || true)
[ -z "$traces" ] || wrong "the purge leaves its name in $traces"
[ -f "$root/home/technician/.local/share/Orvia/archive.sqlite" ] ||
    wrong "the purge takes what is the user's"
echo "nothing is left but what is the user's"
