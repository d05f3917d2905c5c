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
#   ROUNDS=n   rounds of hyperfine, each timing every program (default 5)
#   RUNS=n     runs per program and round (default 30)
#   LIMIT=x    the ratio to hold (default 1.3); the script fails when the
#              median ratio of the rounds is above it
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-bench}
rounds=${ROUNDS:-5}
runs=${RUNS:-30}
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
    "$exe" 2>/dev/null || { echo "$exe did not end cleanly (exit $?)" >&2; exit 1; }
done

# hyperfine runs one program after the other, so a machine whose load changes
# during the run would favour one of them; several short rounds, each timing
# all three, and the median of their ratios hold up better.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for round in $(seq 1 "$rounds"); do
    echo "== round $round of $rounds"
    hyperfine -N --warmup 5 --runs "$runs" --export-json "$work/$round.json" --style basic \
        -n "bare window" "$(printf %q "$bare")" -n "editor" "$(printf %q "$editor")" \
        -n "bare window, full screen" "$(printf %q "$bare") --full-screen" | grep -E "^(Benchmark|  Time|  Range)"
done

# The third program is the bare one with its empty window over the whole
# screen, as the editor's is: it tells the window's size from what is in it.
jq -s -r --argjson limit "$limit" '
    def ms: . * 1000 | . * 10 | round / 10;
    def r2: . * 100 | round / 100;
    def median: sort | if length % 2 == 1 then .[length / 2 | floor] else (.[length / 2 - 1] + .[length / 2]) / 2 end;
    [.[] | .results] as $rounds |
    ($rounds | map(.[0].mean) | median) as $bare |
    ($rounds | map(.[1].mean) | median) as $editor |
    ($rounds | map(.[2].mean) | median) as $full |
    ($rounds | map(.[1].mean / .[0].mean) | median) as $ratio |
    "",
    "median of \($rounds | length) rounds: bare window \($bare | ms) ms, editor \($editor | ms) ms, empty full-screen window \($full | ms) ms",
    "editor / bare window: \($ratio | r2) (rounds: \($rounds | map(.[1].mean / .[0].mean | r2) | join(", "))); aim: at most \($limit)",
    "editor / empty full-screen window: \($rounds | map(.[1].mean / .[2].mean) | median | r2)",
    (if $ratio <= $limit then "within the aim" else "OVER the aim" end)' "$work"/*.json > "$work/summary"
cat "$work/summary"
grep -q "^within the aim" "$work/summary"
