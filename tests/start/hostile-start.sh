#!/usr/bin/env bash
# The editor starts, and reaches its event loop, whatever it finds in its
# settings and recent files' list or is given on its command line: FIFOs,
# names too long for the file system, link loops, garbage, folders it may not
# enter. Each start has a settings folder of its own.
# Usage: tests/start/hostile-start.sh PROBE
set -u
probe=$1
work=$(mktemp -d)
chmod 755 "$work"
trap 'rm -rf "$work"' EXIT
failures=0
n=0
# start NAME [ARGUMENT...]: the settings folder $config is prepared by the caller.
start() {
    local name=$1; shift
    local out status
    out=$(cd "$work" && HOME="$work" XDG_CONFIG_HOME="$config" XDG_DATA_HOME="$work/data" \
          QT_QPA_PLATFORM=offscreen timeout 20 "${runner[@]}" "$probe" "$@" 2>/dev/null)
    status=$?
    if [ $status -ne 0 ] || [ "$out" != "reached the event loop" ]; then
        echo "FAIL: $name: exit $status, said '$out'"
        failures=$((failures + 1))
    fi
}
fresh() {
    n=$((n + 1))
    config="$work/config-$n"
    mkdir -p "$config/shardles-editor"
    settings="$config/shardles-editor"
    chmod -R 777 "$config"
}
runner=()

fresh; mkfifo "$settings/info.ini"; start "info.ini is a FIFO"
fresh; mkfifo "$settings/recent.txt"; start "recent.txt is a FIFO"
fresh; mkfifo "$work/pipe.rsx"; start "a FIFO on the command line" "$work/pipe.rsx"
fresh
ln -s loop "$work/loop"
printf '%s\n' "$work/$(printf 'n%.0s' $(seq 1 300)).rsx" "$work/loop/set.rsx" "$work/loop" \
    "$(printf '\001\377\376 garbage')" "$work/pipe.rsx" > "$settings/recent.txt"
head -c 3000 /dev/urandom >> "$settings/recent.txt"
printf '\377\376/bin\000\n' > "$settings/info.ini"
start "names the file system refuses, a loop, a FIFO and garbage"
# A folder that became private: its files' status cannot be read.
if [ "$(id -u)" -eq 0 ] && command -v setpriv >/dev/null; then
    fresh
    mkdir -m 700 "$work/private" && touch "$work/private/set.rsx"
    printf '%s\n' "$work/private/set.rsx" > "$settings/recent.txt"
    printf '%s\n' "$work/private/" > "$settings/info.ini"
    chmod 666 "$settings"/*
    # A copy of the program, in case the build folder is private to root.
    mkdir -m 755 "$work/bin" && cp "$probe" "$work/bin/" && chmod 755 "$work/bin"/*
    probe="$work/bin/$(basename "$probe")"
    runner=(setpriv --reuid=65534 --regid=65534 --clear-groups)
    start "a recent file in a folder that became private" "$work/private/set.rsx"
    runner=()
else
    echo "SKIPPED the private folder: it needs root to be a second user"
fi
echo "$n hostile starts, $failures failures"
[ $failures -eq 0 ]
