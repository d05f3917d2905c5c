#!/usr/bin/env bash
# Saves in a shared sticky folder where another user plays tricks, as root
# and as an ordinary user:
#   the race: the attacker swaps the name saved to between a file of their
#   own (mode 0666) and a link to the victim's private file, hundreds of
#   times during hundreds of saves; the victim's file keeps its owner and
#   mode whatever the save wrote into it;
#   the planted link: with fs.protected_symlinks on, a link the attacker
#   planted is not followed, as cp would not follow it, and the save says so.
# Needs root (to be two users and set the sysctl); skipped otherwise.
# Usage: tests/cli/hostile-saves.sh CONVERTER SWAPPER DATA_DIR
set -u
convert=$1 swapper=$2 data=$3
skip() { echo "SKIPPED: $*"; exit 77; }
[ "$(id -u)" -eq 0 ] || skip "the test needs root to act as two users"
command -v setpriv >/dev/null || skip "setpriv (util-linux) is missing"
attacker=65534 victim=4242
as() { local who=$1; shift; setpriv --reuid="$who" --regid="$who" --clear-groups "$@"; }
work=$(mktemp -d)
chmod 755 "$work"
sysctl=/proc/sys/fs/protected_symlinks
before=$(cat "$sysctl" 2>/dev/null || echo "")
cleanup() {
    [ -n "${swapping:-}" ] && kill "$swapping" 2>/dev/null
    [ -n "$before" ] && echo "$before" > "$sysctl" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }
cp "$data/cli/files/tiltbash.json" "$work/set.json" && chmod 644 "$work/set.json"
# The other users run copies, in case the build folder is private to root.
mkdir -m 755 "$work/bin" && cp "$convert" "$swapper" "$work/bin/" && chmod 755 "$work/bin"/*
convert="$work/bin/$(basename "$convert")" swapper="$work/bin/$(basename "$swapper")"
mkdir -m 1777 "$work/shared"

# One victim, $1 the uid (0 for root): their private file, and saves into
# a folder that the attacker owns and lets everyone write in, while the
# attacker swaps the name saved to between their own file and a link to
# the private file.
race() {
    local uid=$1 saves=$2 home="$work/home-$1" attic="$work/attic-$1"
    mkdir -m 700 "$home" && echo private > "$home/secret" && chmod 600 "$home/secret"
    chown -R "$uid:$uid" "$home"
    mkdir -m 777 "$attic" && chown $attacker "$attic"
    setpriv --reuid=$attacker --regid=$attacker --clear-groups \
        "$swapper" "$home/secret" "$attic/out.rsx" "$attic/other.rsx" &
    swapping=$!
    local saved=0
    for i in $(seq 1 "$saves"); do
        as "$uid" "$convert" "$work/set.json" "$attic/out.rsx" 2>/dev/null && saved=$((saved + 1))
    done
    kill $swapping; wait $swapping 2>/dev/null; swapping=
    echo "victim $uid: $saved of $saves saves went through while the names were swapped"
    local now
    now=$(stat -c '%u %a' "$home/secret")
    [ "$now" = "$uid 600" ] || fail "victim $uid: the private file is now owner and mode $now"
    extra=$(ls -A "$home" | grep -v -x secret)
    [ -z "$extra" ] || fail "victim $uid: left beside the private file: $extra"
}

if [ -n "$before" ] && echo 0 > "$sysctl" 2>/dev/null; then
    race 0 400
    race $victim 400
else
    echo "protected_symlinks cannot be turned off here; the race runs with it as it is"
    race 0 400
fi

# The planted link, with the kernel's protection on.
if echo 1 > "$sysctl" 2>/dev/null; then
    home="$work/home-planted"
    mkdir -m 700 "$home" && echo private > "$home/secret" && chmod 600 "$home/secret"
    as $attacker ln -s "$home/secret" "$work/shared/planted.rsx"
    message=$("$convert" "$work/set.json" "$work/shared/planted.rsx" 2>&1)
    status=$?
    [ $status -eq 1 ] || fail "the planted link: exit status $status"
    [ "$message" = "$work/shared/planted.rsx: cannot write: Permission denied" ] || fail "the planted link: said '$message'"
    [ "$(cat "$home/secret") $(stat -c %a "$home/secret")" = "private 600" ] || fail "the planted link was followed"
    # The victim's own link there is followed, as the kernel allows.
    ln -s "$home/secret" "$work/shared/own.rsx"
    "$convert" "$work/set.json" "$work/shared/own.rsx" || fail "the victim's own link was refused"
    [ -L "$work/shared/own.rsx" ] && [ "$(stat -c %a "$home/secret")" = 600 ] || fail "the victim's own link"
else
    echo "SKIPPED the planted link: fs.protected_symlinks cannot be set here"
fi
echo "saves against another user: $failures failures"
[ $failures -eq 0 ]
