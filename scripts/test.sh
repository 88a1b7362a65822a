#!/usr/bin/env bash
# Installs what is missing, builds Tarnwick and runs every test.
# The build uses clang with AddressSanitizer and UndefinedBehaviorSanitizer and warnings on,
# so each test also proves the code free of memory and undefined-behaviour faults; the
# suite includes short fuzzing runs of the feed, weather log and race log readers. The
# benchmarks are built too, so they keep compiling (run them from a plain build: README).
# Prints the CTest summary and fails when any test fails.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh

# Reuse compiled objects across checkouts of the same machine.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=true

echo "== Build (clang, sanitizers, fuzzers)"
CC=clang CXX=clang++ cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DTARNWICK_SANITIZE=ON -DTARNWICK_FUZZ=ON -DTARNWICK_BENCH=ON >/dev/null
ninja -C build-asan
echo "== Tests"
cd build-asan
ctest -j"$(nproc)" --output-on-failure
