#!/usr/bin/env bash
# Makes the Debian package of the build with CPack, has lintian check it and looks inside.
# Fails on any lintian error; the warnings and notes are printed for the reader.
#   debian_package.sh <build folder>
set -euo pipefail
build_dir=$1
id=org.tarnwick.Tarnwick

work=$(mktemp -d /tmp/tarnwick-deb.XXXXXX)
trap 'rm -rf "$work"' EXIT

echo "== cpack -G DEB"
# The programs are built already: with Ninja, cpack builds nothing and packs the installation
# of the build as it stands, the programs stripped.
cpack -G DEB --config "$build_dir/CPackConfig.cmake" -B "$work" >"$work/cpack.log" 2>&1 || {
    cat "$work/cpack.log"
    exit 1
}
deb=$(ls "$work"/tarnwick_*.deb)
echo "$deb ($(du -h "$deb" | cut -f1))"

failed=0
echo "== dpkg-deb -I"
dpkg-deb -I "$deb" | tee "$work/info"
for field in 'Package: tarnwick' 'Depends: .*libqt6core6' 'Depends: .*libqt6widgets6' \
    'Depends: .*libqt6sql6-sqlite' 'Depends: .*libqt6svg6' 'Depends: .*fonts-liberation' \
    'Section: ' 'Homepage: https://' 'Maintainer: '; do
    grep -Eq "^ $field" "$work/info" || { echo "FAIL: no '$field' in the control file"; failed=1; }
done

echo "== dpkg-deb -c"
dpkg-deb -c "$deb" >"$work/contents"
for path in \
    ./usr/bin/tarnwick ./usr/bin/oskerby ./usr/bin/pellamor-sim \
    ./usr/share/applications/$id.desktop \
    ./usr/share/icons/hicolor/scalable/apps/$id.svg \
    ./usr/share/mime/packages/$id.xml \
    ./usr/share/metainfo/$id.metainfo.xml \
    ./usr/share/tarnwick/manual/index.html \
    ./usr/share/tarnwick/Bramholdtrack.xlsx \
    ./usr/share/doc/tarnwick/copyright \
    ./usr/share/doc/tarnwick/changelog.gz \
    ./usr/share/man/man1/tarnwick.1.gz; do
    grep -q " $path\( \|$\)" "$work/contents" || { echo "FAIL: $path is not in the package"; failed=1; }
done
# Everything belongs to root, programs and folders 0755, the rest 0644.
if awk '$2 != "root/root" { exit 1 }' "$work/contents"; then :; else
    echo "FAIL: files not owned by root"
    failed=1
fi
grep -Ev '^(drwxr-xr-x|-rwxr-xr-x .*/usr/bin/|-rw-r--r--|lrwxrwxrwx)' "$work/contents" &&
    { echo "FAIL: files with unusual permissions (above)"; failed=1; }
echo "$(wc -l <"$work/contents") entries, all as expected."

echo "== lintian"
# Errors fail; warnings and notes are shown. The sanitizer build the tests run in is a Debug
# build without Debian's hardening flags, so lintian notes hardening-no-fortify-functions and
# hardening-no-bindnow for its programs; scripts/package.sh builds with those flags.
lintian --info --display-level '>=warning' "$deb" | tee "$work/lintian" || true
if grep -q '^E: ' "$work/lintian"; then
    echo "FAIL: lintian errors"
    failed=1
fi
[ "$failed" -eq 0 ] && echo "The package is sound."
exit "$failed"
