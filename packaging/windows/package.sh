#!/usr/bin/env bash
# Makes the installer for 64-bit Windows, dist/orvia-VERSION-setup.exe, and tries it under wine.
# ./package.sh windows calls it, and says more.
set -euo pipefail
cd "$(dirname "$0")/../.."
here=packaging/windows

tools/install.sh
tools/install.sh --windows
version=$(tools/version.py)
tools/version.py check
jobs=${JOBS:-$(nproc)}
build=$PWD/build/package/windows
native=$PWD/build/package/native
mkdir -p dist

# What runs here: the simulator, and the tour that takes the pictures of the help.
cmake -G Ninja -S . -B "$native" -DCMAKE_BUILD_TYPE=Release -DORVIA_HELP_PICTURES=ON
cmake --build "$native" -j"$jobs" --target orvia-sim manual
# Few colours do for pictures of windows; the help is half as large by that.
pictures=$build/pictures
mkdir -p "$pictures"
for picture in "$native"/packaging/pictures/*.png; do
    few=$pictures/$(basename "$picture")
    [ "$few" -nt "$picture" ] || convert "$picture" +dither -colors 256 "PNG8:$few"
done

ORVIA_WINDOWS_PREFIX=$("$here/libraries.sh")
export ORVIA_WINDOWS_PREFIX
# As thorough as Debian compiles its packages: with more, GCC 12 takes texts for longer than they are.
cmake -G Ninja -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" \
    -DCMAKE_TOOLCHAIN_FILE="$PWD/$here/toolchain.cmake" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
    -DORVIA_HELP_SHOTS="$pictures"
cmake --build "$build" -j"$jobs"

beside=()
for file in data/*.lst data/*.tbl "$build/bin/Orvia.chm" LICENSE; do
    beside+=(--beside "$file")
done
runtime=()
folders=()
for library in libstdc++-6.dll libwinpthread-1.dll; do
    folders+=("$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=$library)")")
    runtime+=(--runtime "${folders[-1]}")
done
"$here/stage.py" --program "$build/bin/orvia.exe" --prefix "$ORVIA_WINDOWS_PREFIX" \
    "${runtime[@]}" "${beside[@]}" "$build/stage" "$build/lists"
setup=dist/orvia-$version-setup.exe
makensis -V2 -DVERSION="$version" -DSTAGE="$build/stage" -DLISTS="$build/lists" \
    -DICON="$build/windows/orvia.ico" -DOUT="$PWD/$setup" "$here/orvia.nsi"

largest=12000000
size=$(stat -c %s "$setup")
if [ "$size" -ge "$largest" ]; then
    echo "$setup has $size bytes, $largest are too many" >&2
    exit 1
fi

"$here/check.sh" "$setup" "$build" "$native/bin/orvia-sim" "${folders[@]}"
du -h "$setup"
