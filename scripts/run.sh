#!/usr/bin/env bash
# Builds the editor (installing what is missing) and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh run
cmake -S . -B build-run -G Ninja -DCMAKE_BUILD_TYPE=Release -DSHD_TESTS=OFF >/dev/null
cmake --build build-run -j2
exec build-run/shardles-editor
