#!/usr/bin/env bash
# Times the editor from process start to its window shown, beside a bare Qt
# program that only shows an empty main window, in the same hyperfine run and
# on the same platform plugin (offscreen). The aim: the editor within 1.3
# times the bare program.
#
# The editor's probe (bench/startup_probe) runs the editor's own start-up,
# the very function shardles-editor's main calls, and leaves the event loop
# once the window has been exposed and painted; the bare probe
# (bench/bare_window) does the same for an empty QMainWindow. Both are built
# Release, as scripts/run.sh builds the editor, with the block pictures copied
# beside the editor's probe.
#
# Usage: bench/startup.sh [BUILD_DIR]
#   BUILD_DIR  where the probes are built (default: build-bench)
#   RUNS=n     runs per program (default 100)
#   LIMIT=x    the ratio to hold (default 1.3); the script fails above it
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-bench}
runs=${RUNS:-100}
limit=${LIMIT:-1.3}
command -v hyperfine >/dev/null || { echo "hyperfine is needed" >&2; exit 2; }
command -v jq >/dev/null || { echo "jq is needed" >&2; exit 2; }

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DSHD_TESTS=OFF >/dev/null
cmake --build "$build" --target startup_probe bare_window -j2 >/dev/null

export QT_QPA_PLATFORM=offscreen
editor=$build/bench/startup_probe
bare=$build/bench/bare_window
# Each probe must come up and end by itself.
for exe in "$bare" "$editor"; do
    "$exe" || { echo "$exe did not end cleanly (exit $?)" >&2; exit 1; }
done

results=$(mktemp)
trap 'rm -f "$results"' EXIT
# The third program is the bare one with its empty window over the whole
# screen, as the editor's is: it tells the window's size from what is in it.
hyperfine -N --warmup 10 --runs "$runs" --export-json "$results" \
    -n "bare window" "$(printf %q "$bare")" -n "editor" "$(printf %q "$editor")" \
    -n "bare window, full screen" "$(printf %q "$bare") --full-screen"

jq -r --argjson limit "$limit" '
    def ms: . * 1000 | . * 10 | round / 10;
    def ratio: . * 100 | round / 100;
    (.results[0]) as $bare | (.results[1]) as $editor | (.results[2]) as $full |
    "mean: bare \($bare.mean | ms) ms, editor \($editor.mean | ms) ms, ratio \($editor.mean / $bare.mean | ratio) (aim: at most \($limit))",
    "min:  bare \($bare.min | ms) ms, editor \($editor.min | ms) ms, ratio \($editor.min / $bare.min | ratio)",
    "an empty full-screen window: \($full.mean | ms) ms, \($full.mean / $bare.mean | ratio) times the bare window"' "$results"
jq -e --argjson limit "$limit" '.results[1].mean <= $limit * .results[0].mean' "$results" >/dev/null \
    || { echo "the editor takes more than $limit times the bare window" >&2; exit 1; }
