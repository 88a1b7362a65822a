#!/usr/bin/env bash
# Installs the build into a prefix of its own (with a blank in its name, as a user's folder
# may have) and runs the INSTALLED program: it must find its companions and its data there,
# take weather from the installed instrument simulator, write the day's weather log, take a
# race log handed over by a second start the way a file manager starts it, and end cleanly.
#   installed_program.sh <build folder> <tst_shippedfiles program>
set -euo pipefail
build_dir=$1
lookup_test=$2
id=org.tarnwick.Tarnwick
# The settings that put the simulator on Com1, as the demo start has them.
. "$(cd "$(dirname "$0")/../.." && pwd)/scripts/simulator-profile.sh"

work=$(mktemp -d /tmp/tarnwick-installed.XXXXXX)
sim=""
main=""
cleanup() {
    [ -n "$main" ] && kill "$main" 2>/dev/null || true
    [ -n "$sim" ] && kill "$sim" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
fail() {
    echo "FAIL: $*"
    for log in "$work"/*.log; do
        [ -f "$log" ] && { echo "--- $log"; tail -n 30 "$log"; }
    done
    exit 1
}

root="$work/tarnwick root"
prefix="$root/usr"
echo "== cmake --install into $prefix"
cmake --install "$build_dir" --prefix "$prefix" >"$work/install.log" 2>&1 ||
    fail "cmake --install failed"

expected=(
    bin/tarnwick
    bin/oskerby
    bin/pellamor-sim
    share/tarnwick/Bramholdtrack.xlsx
    share/tarnwick/manual/index.html
    share/tarnwick/manual/style.css
    share/applications/$id.desktop
    share/icons/hicolor/scalable/apps/$id.svg
    share/mime/packages/$id.xml
    share/metainfo/$id.metainfo.xml
    share/doc/tarnwick/copyright
    share/doc/tarnwick/changelog.gz
    share/doc/tarnwick/manual/index.html
    share/man/man1/tarnwick.1.gz
    share/man/man1/oskerby.1.gz
    share/man/man1/pellamor-sim.1.gz
)
for file in "${expected[@]}"; do
    [ -f "$prefix/$file" ] || fail "not installed: $file"
done
for program in tarnwick oskerby pellamor-sim; do
    [ -x "$prefix/bin/$program" ] || fail "not executable: bin/$program"
done
# Nothing of the program's data lands among the programs.
extra=$(find "$prefix/bin" -type f ! -name tarnwick ! -name oskerby ! -name pellamor-sim)
[ -z "$extra" ] || fail "stray files in bin: $extra"
echo "All ${#expected[@]} files are in place."

# The software centre's view of the installed tree: the metainfo, its desktop file and icon.
appstreamcli validate-tree --no-net --no-color "$root" >"$work/tree.log" 2>&1 ||
    fail "appstreamcli validate-tree: $(cat "$work/tree.log")"

echo "== the installed program finds the installed template"
TARNWICK_INSTALLED_PREFIX="$prefix" QT_QPA_PLATFORM=offscreen \
    "$lookup_test" theInstalledProgramFindsTheInstalledTemplate >"$work/lookup.log" 2>&1 ||
    fail "the template lookup from $prefix/bin"
grep -q '^PASS   : .*theInstalledProgramFindsTheInstalledTemplate' "$work/lookup.log" ||
    fail "the template lookup did not run"

echo "== the installed program on the installed simulator"
home="$work/home"
simulator_profile "$home" "$work/instrument"
export QT_QPA_PLATFORM=offscreen
# Every box the program shows is printed and answered with its default.
export TARNWICK_SCRIPTED_DIALOGS=""
# The poll every 400 ms instead of 20 s.
export TARNWICK_TIMER_SCALE=0.02

"$prefix/bin/pellamor-sim" --pty "$work/instrument" --interval 0.3 --seed 7 >"$work/simulator.log" 2>&1 &
sim=$!
for _ in $(seq 100); do
    grep -q '^READY' "$work/simulator.log" 2>/dev/null && break
    sleep 0.1
done
grep -q '^READY' "$work/simulator.log" || fail "the installed simulator did not come up"

# The program closes its own window after a while, which ends it the way a user does.
TARNWICK_ECHO_STATUS=1 TARNWICK_QUIT_AFTER_MS=12000 "$prefix/bin/tarnwick" >"$work/main.log" 2>&1 &
main=$!

weather_log="$home/data/Tarnwick/$(date +%Y-%m-%d).csv"
for _ in $(seq 200); do
    [ -s "$weather_log" ] && grep -q '^STATUS: ABP=' "$work/main.log" && break
    kill -0 "$main" 2>/dev/null || break
    sleep 0.1
done
[ -s "$weather_log" ] || fail "no weather log at $weather_log"
grep -q '^STATUS: ABP=' "$work/main.log" || fail "no live status line"
echo "Weather arrived: $(grep -m1 '^STATUS: ' "$work/main.log")"
echo "Weather log: $(wc -l <"$weather_log") rows in $(basename "$weather_log")"

# A file manager starts the program with the race log's full path as one argument; the main
# instance takes it and the second process ends at once. The file is no race log, so the main
# instance says it cannot load it, naming the path it got.
mkdir -p "$work/Race logs"
race_log="$work/Race logs/Car 7 at Bramhold.trl"
echo "not a race log" >"$race_log"
TARNWICK_QUIT_AFTER_MS=10000 timeout 30 "$prefix/bin/tarnwick" "$race_log" >"$work/second.log" 2>&1 ||
    fail "the second start did not end by itself"
grep -q 'MESSAGE' "$work/second.log" && fail "the second start showed a box"
for _ in $(seq 100); do
    grep -qF "Not able to load Race Log...\\n$race_log" "$work/main.log" && break
    sleep 0.1
done
grep -qF "Not able to load Race Log...\\n$race_log" "$work/main.log" ||
    fail "the main instance did not get the path $race_log"
echo "The path with blanks reached the main instance."

status=0
wait "$main" || status=$?
main=""
[ "$status" -eq 0 ] || fail "the installed program ended with status $status"
echo "The installed program ended cleanly."
