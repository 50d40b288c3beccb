#!/usr/bin/env bash
# Layout and static checks. With --layout the layout alone, with --logic that and the logic of console and simulator, without
# either everything: a file is checked by clang-tidy again only when it, one of its headers or the checks have changed. Prints
# what is wrong and fails on it.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/tidy
mapfile -t sources < <(git ls-files 'src/*.cpp' 'simulator/*.cpp' 'tests/*.cpp' 'bench/*.cpp' \
    'fuzz/*.cpp' 'tools/*.cpp')
if [ "${1:-}" = "--logic" ]; then
    mapfile -t sources < <(git ls-files 'src/*.cpp' 'simulator/*.cpp' | grep -vE '/frm[A-Z]|/qt/|/main\.cpp$')
fi
mapfile -t all < <(git ls-files '*.cpp' '*.h')

echo "== layout"
clang-format --dry-run --Werror "${all[@]}"
# Threads on Windows free what is their own before it is destroyed.
if grep -nw thread_local "${all[@]}"; then
    echo "no thread_local, please" >&2
    exit 1
fi

[ "${1:-}" = "--layout" ] && exit 0

echo "== static checks"
cmake --preset tidy >/dev/null
stamps=$build/tidy
mkdir -p "$stamps"
config=$(sha1sum .clang-tidy | cut -c1-40)
check_one() {
    local source=$1 stamps=$2 build=$3 config=$4 root
    root=$(pwd)
    # Whoever is not in the build has no command to be checked with.
    grep -q "\"$root/$source\"" "$build/compile_commands.json" || return 0
    # A file's state: its own text, that of every header of ours, and the checks.
    local headers
    headers=$(clang++ -std=c++20 -MM -MG -Isrc -Itests -I. -I"$build/src/generated" "$source" 2>/dev/null |
        tr -s ' \\\n' '\n' | grep -E '\.(h|cpp)$' | grep -v '^/' | sort -u)
    local state
    state=$( (echo "$config"; echo "$source"; cat $headers 2>/dev/null) | sha1sum | cut -c1-40)
    [ -f "$stamps/$state" ] && return 0
    if clang-tidy -p "$build" --quiet "$source" >"$stamps/$state.log" 2>&1; then
        rm -f "$stamps/$state.log"
        touch "$stamps/$state"
    else
        grep -vE "warnings generated|Suppressed|Use -header-filter" "$stamps/$state.log"
        rm -f "$stamps/$state.log"
        return 1
    fi
}
export -f check_one
printf '%s\0' "${sources[@]}" |
    xargs -0 -P "$(nproc)" -I{} bash -c 'check_one "$@"' _ {} "$stamps" "$build" "$config"
echo "clean"
