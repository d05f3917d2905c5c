#!/usr/bin/env bash
# Builds the Debian package (installing what is missing) and prints its path.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh package
cmake -S . -B build-deb -G Ninja -DCMAKE_BUILD_TYPE=Release -DSHD_TESTS=OFF >/dev/null
cmake --build build-deb -j2
(cd build-deb && cpack -G DEB >/dev/null)
ls "$PWD"/build-deb/shardles-editor_*.deb
