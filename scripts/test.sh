#!/usr/bin/env bash
# Builds and runs every test (installing what is missing): the sanitizer
# build, a short run of each fuzz target, then the whole suite.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh test
export QT_QPA_PLATFORM=offscreen

echo "== Core and converter tests under AddressSanitizer and UndefinedBehaviorSanitizer"
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DSHD_GUI=OFF -DSHD_SANITIZE=ON >/dev/null
cmake --build build-asan -j2
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir build-asan -j2 --output-on-failure --timeout 300 | tail -n 3

if [ -d fuzz ]; then
  echo "== Fuzz targets, a short run each"
  CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DSHD_GUI=OFF -DSHD_TESTS=OFF -DSHD_FUZZ=ON >/dev/null
  cmake --build build-fuzz -j2
  fuzz/run.sh build-fuzz short
fi

echo "== Whole suite"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2
ctest --test-dir build -j2 --output-on-failure --timeout 300
