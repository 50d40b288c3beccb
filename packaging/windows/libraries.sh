#!/usr/bin/env bash
# Builds what the console links on Windows from Debian's own source packages: Qt's base, SQLite behind
# its SQL driver, and QCustomPlot; and GoogleTest for the tests. Keeps sources, build and result in a cache folder, and does nothing
# where the result is there: some forty minutes of processor time the first time, none the second.
#
#   packaging/windows/libraries.sh       builds, and prints the folder of the result
#
# ORVIA_WINDOWS_CACHE is the cache folder, JOBS says how many compilers run at once.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cache=${ORVIA_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/orvia-windows}
prefix=$cache/qt
jobs=${JOBS:-$(nproc)}
triplet=x86_64-w64-mingw32
export ORVIA_WINDOWS_PREFIX=$prefix
mkdir -p "$cache/source" "$cache/build" "$cache/done" "$prefix"

# done_once NAME COMMAND...: runs the command unless it has once ended well.
done_once() {
    local stamp=$cache/done/$1
    shift
    [ -e "$stamp" ] && return
    "$@" >&2
    touch "$stamp"
}

# fetch PACKAGE: unpacks the source package, and names its folder.
fetch() {
    local folder=$cache/source/$1
    if [ ! -e "$folder" ]; then
        rm -rf "$cache/source/$1.new"
        mkdir "$cache/source/$1.new"
        (cd "$cache/source/$1.new" && apt-get source -qq "$1" >&2)
        mv "$cache/source/$1.new" "$folder"
    fi
    find "$folder" -mindepth 1 -maxdepth 1 -type d
}

# ----- SQLite, as the one file of source that it is published as

build_sqlite() {
    local source build=$cache/build/sqlite
    source=$(fetch sqlite3)
    rm -rf "$build"
    mkdir -p "$build" "$prefix/include" "$prefix/lib"
    (cd "$build" && "$source/configure" --disable-load-extension >configure.log && make sqlite3.c >make.log)
    # The driver asks for the tables of columns.
    "$triplet-gcc-posix" -O2 -DSQLITE_OMIT_LOAD_EXTENSION -DSQLITE_THREADSAFE=1 \
        -DSQLITE_ENABLE_COLUMN_METADATA \
        -c "$build/sqlite3.c" -o "$build/sqlite3.o"
    rm -f "$prefix/lib/libsqlite3.a"
    "$triplet-ar" rcs "$prefix/lib/libsqlite3.a" "$build/sqlite3.o"
    cp "$build/sqlite3.h" "$prefix/include/"
}

# ----- Qt's base: Core, Gui, Widgets, PrintSupport, Sql, Test

build_qtbase() {
    local source build=$cache/build/qtbase
    source=$(fetch qt6-base)
    # Gui has the letters of DirectWrite with Direct2D only, which others do not ask.
    sed -i 's/^ *#\(if\|elif\) QT_CONFIG(directwrite3\{0,1\})$/& \&\& QT_CONFIG(direct2d)/' \
        "$source/src/printsupport/platform/windows/qprintengine_win.cpp" \
        "$source/src/plugins/platforms/windows/qwindowsintegration.cpp"
    # Pen tablets need a header that Debian leaves out.
    cmake -G Ninja -S "$source" -B "$build" \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON \
        -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_DOCS=OFF \
        -DSQLite3_INCLUDE_DIR="$prefix/include" -DSQLite3_LIBRARY="$prefix/lib/libsqlite3.a" \
        -DFEATURE_sql=ON -DFEATURE_sql_sqlite=ON -DFEATURE_system_sqlite=ON -DFEATURE_sql_odbc=OFF \
        -DFEATURE_testlib=ON -DFEATURE_printer=ON -DFEATURE_tabletevent=OFF \
        -DINPUT_opengl=no -DFEATURE_vulkan=OFF -DFEATURE_direct2d=OFF \
        -DFEATURE_network=OFF -DFEATURE_dbus=OFF -DFEATURE_xml=OFF -DFEATURE_concurrent=OFF \
        -DFEATURE_system_zlib=OFF -DFEATURE_system_png=OFF -DFEATURE_system_jpeg=OFF \
        -DFEATURE_system_freetype=OFF -DFEATURE_system_harfbuzz=OFF -DFEATURE_system_pcre2=OFF \
        -DFEATURE_system_doubleconversion=OFF -DFEATURE_icu=OFF -DFEATURE_zstd=OFF -DFEATURE_glib=OFF \
        -DFEATURE_androiddeployqt=OFF -DFEATURE_pkg_config=OFF
    cmake --build "$build" -j"$jobs"
    cmake --install "$build" >"$build/install.log"
}

# ----- QCustomPlot

build_qcustomplot() {
    local source build=$cache/build/qcustomplot
    source=$(fetch qcustomplot)
    cmake -G Ninja -S "$source" -B "$build" \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DUSE_QT_VERSION=6
    cmake --build "$build" -j"$jobs"
    cmake --install "$build" >"$build/install.log"
}

# ----- GoogleTest, whose sources its package brings

build_googletest() {
    local build=$cache/build/googletest
    cmake -G Ninja -S /usr/src/googletest -B "$build" \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$prefix"
    cmake --build "$build" -j"$jobs"
    cmake --install "$build" >"$build/install.log"
}

done_once googletest build_googletest
done_once sqlite build_sqlite
done_once qtbase build_qtbase
done_once qcustomplot build_qcustomplot
echo "$prefix"
