#!/usr/bin/env bash
# A longer fuzz run of every libFuzzer target: builds build-fuzz with clang and the sanitizers
# when needed, then runs each target for the given number of seconds (default 600) on its
# corpus, in its own scratch home. Findings (crash-*, leak-*, timeout-*) land in
# build-fuzz/fuzz/findings/<target>/.
#   scripts/fuzz-long.sh [seconds] [target...]
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build-fuzz
seconds=${1:-600}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(fuzz_serialfeed fuzz_weatherlog racelog_fuzz fuzz_timeslip fuzz_workbook)

if [ ! -f "$build/build.ninja" ]; then
    CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DTARNWICK_FUZZ=ON -DTARNWICK_SANITIZE=ON
fi
ninja -C "$build" "${targets[@]}"

for target in "${targets[@]}"; do
    corpus=$build/fuzz/corpus/$target
    findings=$build/fuzz/findings/$target
    home=$(mktemp -d)
    mkdir -p "$corpus" "$findings"
    echo "== $target for ${seconds}s"
    XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data \
        ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        "$build/bin/$target" -max_total_time="$seconds" -max_len=8192 -timeout=10 \
        -artifact_prefix="$findings/" -print_final_stats=1 \
        "$corpus" "$root/fuzz/seeds/$target"
    rm -rf "$home"
done
