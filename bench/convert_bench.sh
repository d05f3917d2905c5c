#!/usr/bin/env bash
# Times shardles-convert converting a 255-level Shardles set with custom
# pictures between every pair of forms, against `shardles-convert --version`,
# which is the cost of starting the process at all. The aim: no conversion
# takes more than 2 times as long as that.
#
# Usage: bench/convert_bench.sh [BUILD_DIR] [WORK_DIR]
#   BUILD_DIR  where shardles-convert was built (default: build-cli)
#   WORK_DIR   where the files go (default: a new temporary folder); the
#              output is written there on every run, so its file system counts
#   RUNS=n     runs of each command per conversion (default 100)
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-cli}
exe=$build/shardles-convert
[[ -x $exe ]] || { echo "no converter at $exe; build it first" >&2; exit 2; }
if [[ $# -ge 2 ]]; then work=$2; mkdir -p "$work"; else work=$(mktemp -d); trap 'rm -rf "$work"' EXIT; fi
runs=${RUNS:-100}

# The set: 255 levels, every block code in use, one last block a level, and
# both custom pictures.
awk 'BEGIN {
    srand(7)
    printf "{\"Kind\": \"Shardles\", \"Title\": \"Benchmark set\", \"BonusClock\": \"90\",\n"
    printf " \"ExtraLifePoints\": \"300\", \"UseCustomShardles\": true,\n"
    for (p = 0; p < 2; p++) {
        printf " \"%s\": [", p ? "CustomChangerPicture" : "CustomShardlePicture"
        for (i = 0; i < 60; i++) printf "%s%d", i ? "," : "", int(rand() * 2)
        printf "],\n"
    }
    printf " \"Levels\": [\n"
    for (l = 0; l < 255; l++) {
        last = int(rand() * 80)
        printf "  {\"BallX\": %d, \"BallY\": %d, \"Cells\": [", int(rand() * 95), int(rand() * 63)
        for (i = 0; i < 80; i++) printf "%s%d", i ? "," : "", i == last ? 6 : int(rand() * 16)
        printf "]}%s\n", l < 254 ? "," : ""
    }
    printf "]}\n"
}' >"$work/generated.json"

forms=(json rsx 83l z80 83p)
for ext in "${forms[@]}"; do "$exe" "$work/generated.json" "$work/in.$ext"; done

echo "Input sizes:"
for ext in "${forms[@]}"; do printf '  in.%-4s %7d bytes\n' "$ext" "$(wc -c <"$work/in.$ext")"; done
echo "Work folder on: $(df -T "$work" | awk 'NR == 2 { print $2 }'), $runs runs of each command"

# Each conversion is timed against --version run by run, the two taking
# turns (bench/alternate.cpp), so a machine whose speed comes and goes slows
# both alike; the ratio is the median of neighbouring runs' ratios.
alternate=$work/alternate
c++ -O2 -std=c++20 -o "$alternate" "$root/bench/alternate.cpp"
printf '\n%-18s %12s %12s %8s %10s\n' "conversion" "median ms" "--version ms" "ratio" "CPU ratio"
worst=0 worstName=
for from in "${forms[@]}"; do
    for to in "${forms[@]}"; do
        read -r base conv ratio cpu < <("$alternate" "$runs" "$exe" --version -- "$exe" "$work/in.$from" "$work/out.$to")
        flag=$(awk -v r="$ratio" 'BEGIN { if (r > 2) print "  over 2x" }')
        printf '%-18s %12.2f %12.2f %7.2fx %9.2fx%s\n' "$from->$to" "$conv" "$base" "$ratio" "$cpu" "$flag"
        if awk -v a="$ratio" -v b="$worst" 'BEGIN { exit !(a > b) }'; then worst=$ratio worstName="$from->$to"; fi
    done
done
echo
printf 'slowest: %s at %.2fx the start-up (median of %d alternating runs)\n' "$worstName" "$worst" "$runs"
