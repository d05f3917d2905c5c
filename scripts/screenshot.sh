#!/usr/bin/env bash
# Writes the README's pictures of the editor, each on a virtual screen of its
# own under Xvfb:
#
#   docs/screenshot.png        a sample Shardles set on a 1920x1200 screen:
#                              the overview panel and the grid at 300%
#   docs/window-1024x768.png   a new set on a 1024x768 screen
#   docs/window-150.png        a new set at a scale of 150%
#                              (QT_SCALE_FACTOR=1.5 on a 1536x1152 screen)
#
#   scripts/screenshot.sh [OUT_DIR]     (default docs)
#
# Needs xvfb-run, ImageMagick's import and libXtst (for the Return key that
# closes "Opened Succesfully"). The build directory is $BUILD_DIR, default
# build-gui.
set -euo pipefail
cd "$(dirname "$0")/.."
out=$(realpath -m "${1:-docs}")
build_dir=$(realpath -m "${BUILD_DIR:-build-gui}")

if [[ ! -f "$build_dir/build.ninja" ]]; then
  cmake -S . -B "$build_dir" -G Ninja -DSHD_TESTS=OFF >/dev/null
fi
log=$(mktemp)
ninja -C "$build_dir" -j2 shardles-editor >"$log" 2>&1 || { cat "$log"; rm -f "$log"; exit 1; }
rm -f "$log"
mkdir -p "$out"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Twelve levels of walls, last blocks, shardles and their changers.
python3 - "$work/sample.json" <<'PY'
import json, sys
levels = []
for n in range(12):
    cells = [0] * 80
    for c in range(8):
        cells[c] = 1 + (n + c) % 2 * 14              # a top wall, arrows between blocks
    for r in range(2, 8):
        cells[r * 8 + (r + n) % 8] = 11 + (r % 2)    # a diagonal of lock blocks
    cells[8 * 4 + 3] = cells[8 * 4 + 4] = 6          # last blocks
    cells[8 * 2 + 1], cells[8 * 2 + 6] = 2, 3        # a spotted shardle and its changer
    cells[8 * 6 + 1], cells[8 * 6 + 6] = 8 + n % 2, 9 - n % 2
    levels.append({"Cells": cells, "BallX": 40, "BallY": 50})
json.dump({"Kind": "Shardles", "Title": "Sample levels", "Levels": levels}, open(sys.argv[1], "w"))
PY

keys_py="$work/keys.py"
# Presses the keys named on the command line (X keysym names) on the X display.
cat >"$keys_py" <<'PY'
import ctypes, sys, time
x11 = ctypes.cdll.LoadLibrary("libX11.so.6")
xtst = ctypes.cdll.LoadLibrary("libXtst.so.6")
x11.XOpenDisplay.restype = ctypes.c_void_p
x11.XStringToKeysym.restype = ctypes.c_ulong
x11.XKeysymToKeycode.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
xtst.XTestFakeKeyEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]
x11.XFlush.argtypes = [ctypes.c_void_p]
display = x11.XOpenDisplay(None)
if not display:
    sys.exit("no X display")
for name in sys.argv[1:]:
    code = x11.XKeysymToKeycode(display, x11.XStringToKeysym(name.encode()))
    xtst.XTestFakeKeyEvent(display, code, 1, 0)
    xtst.XTestFakeKeyEvent(display, code, 0, 0)
    x11.XFlush(display)
    time.sleep(0.5)
PY

# shot SCREEN PNG [FILE] [ENV...]: the editor maximised on a screen of that size.
shot() {
  local screen=$1 png=$2 file=$3
  shift 3
  env "$@" xvfb-run -a -s "-screen 0 ${screen}x24" bash -s "$build_dir" "$png" "$file" "$keys_py" <<'INNER'
set -euo pipefail
build_dir=$1 png=$2 file=$3 keys_py=$4
"$build_dir/shardles-editor" ${file:+"$file"} &
editor=$!
sleep 3
# The message box that says the file opened has the keyboard.
if [[ -n "$file" ]]; then /usr/bin/python3 "$keys_py" Return; sleep 1; fi
import -window root "$png"
kill "$editor"
wait "$editor" 2>/dev/null || true
INNER
  echo "wrote $png"
}

shot 1920x1200 "$out/screenshot.png" "$work/sample.json"
shot 1024x768 "$out/window-1024x768.png" ""
shot 1536x1152 "$out/window-150.png" "" QT_SCALE_FACTOR=1.5
