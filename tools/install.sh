#!/usr/bin/env bash
# Installs what a bare Debian 12 machine lacks to build, test and show the console; with --debian, what
# it lacks to make and check the package. Does nothing, quickly, where all of it is there.
set -euo pipefail
packages=(
    g++ cmake ninja-build ccache git python3 ca-certificates
    qt6-base-dev qt6-serialport-dev qt6-svg-dev libqt6svg6 libqt6sql6-sqlite libqt6sql6-psql libgl-dev
    postgresql-15
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
known=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' 2>/dev/null | awk '$2=="installed"{print $1}')
missing=()
for package in "${packages[@]}"; do
    grep -qx "$package" <<<"$known" || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi
sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
