#!/usr/bin/env bash
# Installs what is missing, builds Tarnwick twice and runs every test on each build:
#  1. clang with AddressSanitizer and UndefinedBehaviorSanitizer and warnings on, so each test
#     also proves the code free of memory and undefined-behaviour faults; the suite includes
#     short fuzzing runs of the feed, weather log and race log readers, and the benchmarks are
#     built so they keep compiling (run them from a plain build: README);
#  2. the gcc Release build the package is made from (scripts/release-build.sh), so the suite
#     also passes on what ships, where the optimiser can turn a fault the sanitizers did not
#     meet into a crash.
# Prints each build's CTest summary and fails when any test of either build fails.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh

# Reuse compiled objects across checkouts of the same machine.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=true
jobs=$(nproc)
failed=()

echo "== Build (clang, sanitizers, fuzzers)"
CC=clang CXX=clang++ cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DTARNWICK_SANITIZE=ON -DTARNWICK_FUZZ=ON -DTARNWICK_BENCH=ON >/dev/null
ninja -C build-asan
echo "== Tests (clang, sanitizers)"
(cd build-asan && ctest -j"$jobs" --output-on-failure) || failed+=("sanitizer build")

echo "== Build (gcc, Release, as packaged)"
. scripts/release-build.sh
configure_release build-release
ninja -C build-release
echo "== Tests (gcc, Release, as packaged)"
(cd build-release && ctest -j"$jobs" --output-on-failure) || failed+=("Release build")

if [ ${#failed[@]} -gt 0 ]; then
    printf "Tests failed in the %s.\n" "${failed[@]}"
    exit 1
fi
