#!/usr/bin/env bash
# Makes what is installed on other machines.
#
#   ./package.sh            the Debian package, dist/orvia_VERSION_amd64.deb
#   ./package.sh debian     the same
#
# Installs what is missing, builds in build/package, where the next time only what changed is built
# again, and ends with the checks: lintian without errors and warnings, hardening, desktop files,
# metainfo, manual pages, and a walk through the console in a fresh system. JOBS says how many
# compilers run at once.
set -euo pipefail
cd "$(dirname "$0")"

case "${1:-debian}" in
    debian) ;;
    *)
        echo "usage: ./package.sh [debian]" >&2
        exit 2
        ;;
esac

tools/install.sh
tools/install.sh --debian
sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)

version=$(tools/version.py)
tools/version.py check
build=build/package/debian
tree=$build/orvia
deb=orvia_${version}_$(dpkg --print-architecture).deb
mkdir -p "$tree" dist

# The sources as they are now. What was built of them before stays; times are kept, so that what did
# not change is not built again.
find "$tree" -mindepth 1 -maxdepth 1 ! -name 'obj-*' -exec rm -rf {} +
git ls-files -z --cached --others --exclude-standard |
    tar --create --null --files-from=- --ignore-failed-read --warning=no-failed-read |
    tar --extract --directory="$tree"
# Without a second package of debug symbols, which takes a minute to pack.
export DEB_BUILD_OPTIONS="${DEB_BUILD_OPTIONS:-} noautodbgsym"
(cd "$tree" && dpkg-buildpackage -b -us -uc -nc -j"${JOBS:-$(nproc)}")
mv "$build/$deb" dist/

echo "== lintian"
lintian --allow-root --fail-on error,warning --info "dist/$deb"

contents=$build/contents
rm -rf "$contents"
dpkg-deb --extract "dist/$deb" "$contents"
echo "== hardening"
# Of what is compiled into the programs, as the compiler was called for it, this time or before.
python3 -c 'import json, sys
print("dpkg-buildpackage: info: source package orvia")
for one in json.load(sys.stdin):
    if "/src/" in one["file"] or "/simulator/" in one["file"]:
        print(one["command"])' <"$(echo "$tree"/obj-*/compile_commands.json)" >"$build/compiled"
blhc "$build/compiled"
for program in orvia orvia-sim; do
    # Control flow protection is no part of what Debian 12 builds with. Whether functions are fortified shows
    # above: of those that these programs call, none is of a kind that is replaced.
    hardening-check --nocfprotection --nofortify \
        "$(find "$contents/usr/lib" -type f -name "$program")"
done
echo "== desktop files"
desktop-file-validate "$contents"/usr/share/applications/*.desktop
echo "== metainfo"
appstreamcli validate --no-net --pedantic "$contents"/usr/share/metainfo/*.metainfo.xml
echo "== manual pages"
for page in "$contents"/usr/share/man/man1/*.1.gz; do
    said=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
    [ -z "$said" ] || { echo "$page: $said" >&2; exit 1; }
done
echo "== in a fresh Debian"
cmake --build "$tree"/obj-* --target orvia-guide
if "${sudo[@]}" unshare --mount true; then
    packaging/debian_root_test.sh "dist/$deb" "$tree"/obj-*/guide "$build/pictures"
else
    echo "NOT TRIED: a system inside this one needs mounts, which are not allowed here" >&2
fi
du -h "dist/$deb"
