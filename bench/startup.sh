#!/usr/bin/env bash
# Times the editor from process start to its window shown, beside a bare Qt
# program that only shows an empty main window, on the same platform plugin
# (offscreen). The aim: the editor within 1.5 times the bare program.
#
# The editor's probe (bench/startup_probe) runs the editor's own start-up,
# the very function shardles-editor's main calls, and leaves the event loop
# once the window has been exposed and painted; the bare probe
# (bench/bare_window) does the same for an empty QMainWindow. Both are built
# Release, as scripts/run.sh builds the editor, with the block pictures copied
# beside the editor's probe.
#
# The two take turns run by run (bench/alternate.cpp), so a machine whose
# speed comes and goes slows both alike; the ratio is the median of
# neighbouring runs' ratios. The bare program with its empty window over the
# whole screen, as the editor's is, is timed the same way beside the editor:
# it tells the window's size from what is in it.
#
# Usage: bench/startup.sh [BUILD_DIR]
#   BUILD_DIR  where the probes are built (default: build-bench)
#   RUNS=n     runs of each program (default 150)
#   LIMIT=x    the ratio to hold (default 1.5); the script fails when the
#              editor's median ratio to the bare window is above it
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-bench}
runs=${RUNS:-150}
limit=${LIMIT:-1.5}

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DSHD_TESTS=OFF >/dev/null
cmake --build "$build" --target startup_probe bare_window -j2 >/dev/null
alternate=$build/bench/alternate
c++ -O2 -std=c++20 -o "$alternate" "$root/bench/alternate.cpp"

export QT_QPA_PLATFORM=offscreen
editor=$build/bench/startup_probe
bare=$build/bench/bare_window
# Each probe must come up and end by itself.
for exe in "$bare" "$editor"; do
    "$exe" 2>/dev/null || { echo "$exe did not end cleanly (exit $?)" >&2; exit 1; }
done

read -r bareMs editorMs ratio _ < <("$alternate" "$runs" "$bare" -- "$editor")
read -r fullMs editorMs2 fullRatio _ < <("$alternate" "$runs" "$bare" --full-screen -- "$editor")
printf 'bare window %.1f ms, editor %.1f ms: editor / bare window %.2f (median of %d alternating runs); aim: at most %s\n' \
    "$bareMs" "$editorMs" "$ratio" "$runs" "$limit"
printf 'empty full-screen window %.1f ms, editor %.1f ms: editor / empty full-screen window %.2f\n' \
    "$fullMs" "$editorMs2" "$fullRatio"
if awk -v r="$ratio" -v l="$limit" 'BEGIN { exit !(r <= l) }'; then echo "within the aim"; else echo "OVER the aim"; exit 1; fi
