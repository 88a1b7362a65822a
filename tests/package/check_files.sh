#!/usr/bin/env bash
# The files that tell the desktop about Tarnwick pass the desktop's own checkers: the menu
# entry (desktop-file-validate), the software centre entry (appstreamcli) and the file type
# (xmllint). Any error, and any warning of the first two, fails.
#   check_files.sh <source folder> <build folder>
set -euo pipefail
source_dir=$1
build_dir=$2
id=org.tarnwick.Tarnwick
failed=0

echo "== desktop-file-validate $id.desktop"
out=$(desktop-file-validate "$source_dir/packaging/$id.desktop" 2>&1) || failed=1
echo "$out"
# A hint is advice only; an error or a warning is not.
if grep -Eq ': (error|warning):' <<<"$out"; then failed=1; fi

echo "== appstreamcli validate --no-net $id.metainfo.xml"
# The metainfo as installed, with its release number filled in.
appstreamcli validate --no-net --no-color "$build_dir/packaging/$id.metainfo.xml" || failed=1

echo "== xmllint $id.mime.xml"
xmllint --noout "$source_dir/packaging/$id.mime.xml" || failed=1
# The file type must be the one the menu entry opens and the metainfo provides.
grep -q 'type="application/x-tarnwick-race-log"' "$source_dir/packaging/$id.mime.xml" || failed=1
grep -q '^MimeType=application/x-tarnwick-race-log;$' "$source_dir/packaging/$id.desktop" || failed=1
grep -q '<mediatype>application/x-tarnwick-race-log</mediatype>' \
    "$build_dir/packaging/$id.metainfo.xml" || failed=1
xmllint --noout "$source_dir/packaging/$id.svg" || failed=1

[ "$failed" -eq 0 ] && echo "All package files are valid."
exit "$failed"
