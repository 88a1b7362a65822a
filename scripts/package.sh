#!/usr/bin/env bash
# Builds Tarnwick for release, makes the Debian package with CPack, has lintian check it and
# prints the path of the .deb. Install it with
#   sudo apt install ./build-release/tarnwick_<version>_<arch>.deb
# The build folder is build-release unless another is given: scripts/package.sh [folder]
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"
build=$(realpath -m "${1:-build-release}")

scripts/install-deps.sh
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=true

echo "== Build (Release) in $build"
. scripts/release-build.sh
configure_release "$build"
# Only what goes into the package; the tests are the business of scripts/test.sh.
cmake --build "$build" --target tarnwick oskerby pellamor-sim tarnwick_package_files

echo "== Package"
rm -f "$build"/tarnwick_*.deb
(cd "$build" && cpack -G DEB >/dev/null)
deb=$(ls "$build"/tarnwick_*.deb)

echo "== lintian"
lintian --info --fail-on error "$deb"
echo "$deb"
