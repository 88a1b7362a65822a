#!/usr/bin/env bash
# Installs what is missing, builds Tarnwick twice and runs every test:
#   build/       gcc, warnings on, the whole suite
#   build-asan/  clang with AddressSanitizer and UndefinedBehaviorSanitizer, the whole suite
#                again plus short fuzzing runs of the feed and file readers
# Prints the CTest summary of each and fails when any test fails.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh

jobs=$(nproc)
status=0

echo "== Build (gcc)"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
ninja -C build
echo "== Tests (gcc)"
(cd build && ctest -j"$jobs" --output-on-failure) || status=1

echo "== Build (clang, sanitizers, fuzzers)"
CC=clang CXX=clang++ cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DTARNWICK_SANITIZE=ON -DTARNWICK_FUZZ=ON -DTARNWICK_BENCH=OFF >/dev/null
ninja -C build-asan
echo "== Tests (sanitizers)"
(cd build-asan && ctest -j"$jobs" --output-on-failure) || status=1

exit $status
