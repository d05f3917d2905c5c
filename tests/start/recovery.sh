#!/usr/bin/env bash
# A set changed in a running editor survives the editor's end by kill -9 and
# by SIGTERM: the next start offers its recovery copy, and the set restored is
# the set before the end, byte for byte. A second editor started meanwhile is
# never offered the first one's live copy.
# Usage: tests/start/recovery.sh RECOVERY_PROBE
set -u
probe=$1
work=$(mktemp -d)
trap 'kill -9 $(jobs -p) 2>/dev/null; rm -rf "$work"' EXIT
export HOME=$work XDG_CONFIG_HOME=$work/config XDG_DATA_HOME=$work/data QT_QPA_PLATFORM=offscreen
copies=$work/data/shardles-editor/recovery
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
# wait_for CONDITION: up to 20 seconds.
wait_for() {
    for _ in $(seq 1 200); do eval "$1" && return 0; sleep 0.1; done
    return 1
}
has_copy() { compgen -G "$copies/*.copy" >/dev/null; }

for ending in KILL TERM; do
    rm -rf "$work/data" "$work"/*.rsx "$work"/*.out
    (cd "$work" && PROBE_MODE=change PROBE_OUT=$work/before.rsx exec "$probe" >"$work/change.out" 2>/dev/null) &
    editor=$!
    wait_for 'grep -q changed "$work/change.out"' || fail "$ending: the editor did not change its set"
    if [ $ending = KILL ]; then
        # kill -9 leaves no time to write anything: the copy must be on the disk already.
        wait_for has_copy || fail "KILL: no recovery copy was written"
        out=$(cd "$work" && PROBE_MODE=look timeout 20 "$probe" 2>/dev/null)
        [ "$out" = looked ] || fail "a second editor was offered the live copy of the first: '$out'"
        has_copy || fail "a second editor removed the live copy of the first"
    elif has_copy; then
        fail "TERM: the copy was there before the signal, so the signal's own write is not tested"
    fi
    kill -$ending $editor
    wait $editor
    status=$?
    [ $ending = TERM ] && [ $status -ne 143 ] && fail "TERM: the editor ended with $status, not by its signal"
    has_copy || fail "$ending: no recovery copy is left"
    out=$(cd "$work" && PROBE_MODE=restore PROBE_OUT=$work/after.rsx timeout 20 "$probe" 2>/dev/null)
    grep -q '^offered: The editor did not end cleanly.' <<<"$out" || fail "$ending: the copy was not offered: '$out'"
    grep -q 'Untitled, Shardles, 2 levels' <<<"$out" || fail "$ending: the offer does not describe the set: '$out'"
    grep -q '^restored changed Untitled$' <<<"$out" || fail "$ending: not restored as changed: '$out'"
    grep -q '^yes/no/cancel: Save before quiting?$' <<<"$out" || fail "$ending: closing did not ask to save: '$out'"
    cmp -s "$work/before.rsx" "$work/after.rsx" || fail "$ending: the restored set differs from the set before the end"
    # Restored, the copy is the new editor's; closed with No to saving, none is left to offer.
    out=$(cd "$work" && PROBE_MODE=look timeout 20 "$probe" 2>/dev/null)
    [ "$out" = looked ] || fail "$ending: a copy was offered again after it was restored: '$out'"
done
[ $failures -eq 0 ] && echo "recovered after kill -9 and SIGTERM"
exit $(( failures > 0 ))
