#!/usr/bin/env bash
# Installs what a bare Debian 12 machine lacks to build, test and show the console; with --debian, what
# it lacks to make and check the package; with --windows, to make and try the installer for Windows.
# Does nothing, quickly, where all of it is there.
set -euo pipefail
packages=(
    g++ cmake ninja-build ccache git python3 ca-certificates
    qt6-base-dev qt6-serialport-dev libqt6sql6-sqlite libqt6sql6-psql postgresql-15
    libgl-dev librsvg2-bin
    libqcustomplot-dev qtkeychain-qt6-dev
    libgtest-dev libgmock-dev libbenchmark-dev libboost-dev libsqlite3-dev
    clang clang-format clang-tidy libclang-rt-14-dev
    fonts-dejavu-core poppler-utils xvfb xauth
)
if [ "${1:-}" = "--debian" ]; then
    packages=(
        dpkg-dev debhelper librsvg2-bin
        lintian devscripts desktop-file-utils appstream man-db xz-utils
        blhc debootstrap
    )
fi
if [ "${1:-}" = "--windows" ]; then
    packages=(
        g++-mingw-w64-x86-64-posix gcc dpkg-dev tcl make
        nsis fp-utils
        wine64 xvfb xauth fonts-dejavu-core imagemagick
    )
fi
known=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' 2>/dev/null | awk '$2=="installed"{print $1}')
missing=()
for package in "${packages[@]}"; do
    grep -qx "$package" <<<"$known" || missing+=("$package")
done
sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)
# Libraries for Windows are built of Debian's source packages, which a machine need not list. The key
# is named as the list of programs names it: two ways to name one key spoil both lists.
sources=/etc/apt/sources.list.d/orvia-sources.sources
if [ "${1:-}" = "--windows" ] && ! apt-cache showsrc qt6-base 2>/dev/null | grep -q '^Package'; then
    "${sudo[@]}" tee "$sources" >/dev/null <<'LIST'
Types: deb-src
URIs: http://deb.debian.org/debian
Suites: bookworm bookworm-updates
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
LIST
    "${sudo[@]}" apt-get update -qq
fi
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
