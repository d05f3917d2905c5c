#!/usr/bin/env bash
# Saves under pressure, as the converter makes them:
#   200 saves of two different sets to one file, two at a time, then twenty
#   at once: each leaves one of the two files whole, and nothing beside it;
#   200 saves ended at random moments by signals of every kind that ends a
#   process: the file is the old one or the new one, whole, and nothing is
#   left beside it;
#   200 reads of a file rewritten meanwhile: a refusal perhaps, never a crash.
# Usage: tests/cli/saves.sh CONVERTER DATA_DIR
set -u
convert=$1 data=$2
work=$(mktemp -d)
# A child killed before it runs the converter is a copy of this shell and
# runs this trap too: only the script itself cleans up.
main=$$
trap '[ "$BASHPID" = "$main" ] && rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

"$convert" "$data/cli/files/big.json" a.rsx && "$convert" "$data/cli/files/tiltbash.json" b.rsx || exit 1
cp a.rsx a.json.rsx; cp b.rsx b.json.rsx
"$convert" a.rsx a.json && "$convert" b.rsx b.json || exit 1
# Whatever ran, out.rsx must be one of the two sets, and the folder must hold only these.
check() {
    if ! cmp -s out.rsx a.rsx && ! cmp -s out.rsx b.rsx; then fail "$1: out.rsx is neither set whole"; fi
    extra=$(ls -A | grep -v -x -e a.rsx -e b.rsx -e a.json.rsx -e b.json.rsx -e a.json -e b.json -e out.rsx)
    [ -z "$extra" ] || fail "$1: left beside: $extra"
}

for i in $(seq 1 100); do
    "$convert" a.json out.rsx & "$convert" b.json out.rsx & wait
    check "overlapping save $i"
done
for i in $(seq 1 20); do "$convert" a.json out.rsx & "$convert" b.json out.rsx & done
wait
check "twenty at once"

# Any signal that ends a process by default; a background job would ignore
# an interrupt or a quit, so the converter starts with every default.
signals=(TERM HUP INT QUIT ALRM USR1 USR2 XCPU VTALRM PROF PIPE RTMIN)
for i in $(seq 1 200); do
    signal=${signals[RANDOM % ${#signals[@]}]}
    env --default-signal "$convert" a.json out.rsx & pid=$!
    sleep "0.00$((RANDOM % 4))"
    kill -$signal $pid 2>/dev/null
    wait $pid 2>/dev/null
    check "save ended by SIG$signal, $i"
    "$convert" b.json out.rsx
done

{ for i in $(seq 1 2000); do cp a.json in.json; cp b.json in.json; done; } & writer=$!
for i in $(seq 1 200); do
    "$convert" --check in.json >/dev/null 2>&1
    status=$?
    [ $status -le 1 ] || fail "read $i of a file being rewritten ended with status $status"
done
kill $writer 2>/dev/null
wait 2>/dev/null
echo "600 saves and 200 reads under pressure, $failures failures"
[ $failures -eq 0 ]
