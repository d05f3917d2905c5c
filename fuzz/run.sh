#!/usr/bin/env bash
# Runs every fuzz target from seeds our writers make, plus the kept regressions.
# Usage: fuzz/run.sh BUILD_DIR short|long [seconds per target for long, default 600]
set -euo pipefail
build=$1; mode=${2:-short}; seconds=${3:-600}
here=$(cd "$(dirname "$0")" && pwd)
for form in myfile oldmyfile list source program json clipboard; do
  corpus="$build/corpus-$form"
  mkdir -p "$corpus" "$here/regressions/$form"
  # The clipboard's seeds are kept among its regressions.
  [ "$form" = clipboard ] || "$build/fuzz/make_seeds" "$form" "$corpus" >/dev/null
  if [ "$mode" = long ]; then
    limit=(-max_total_time="$seconds")
  else
    limit=(-runs=20000)
  fi
  log="$build/fuzz-$form.log"
  # Any report of a sanitizer fails the run, even one that let the target go on.
  failed() { tail -n 40 "$log"; echo "fuzz_$form: FAILED"; exit 1; }
  reported() { grep -q -E 'runtime error|(ERROR|WARNING): [A-Za-z]+Sanitizer' "$log"; }
  # Regressions first, on their own, so a fixed crash stays fixed.
  "$build/fuzz/fuzz_$form" -runs=0 -artifact_prefix="$build/" "$here/regressions/$form" >"$log" 2>&1 || failed
  reported && failed
  "$build/fuzz/fuzz_$form" "${limit[@]}" -max_len=16384 -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
    -artifact_prefix="$build/" "$corpus" "$here/regressions/$form" >"$log" 2>&1 || failed
  reported && failed
  runs=$(grep -m1 'stat::number_of_executed_units' "$log" | awk '{print $2}')
  echo "fuzz_$form: $runs runs, no crash, no hang, no sanitizer report, every set consistent"
done
