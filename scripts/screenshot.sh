#!/usr/bin/env bash
# Starts the editor on a virtual 1600x1000 screen and writes PNGs of it.
#
#   scripts/screenshot.sh [shardles.png [tiltbash.png]]
#
# The first picture, default docs/screenshot.png, shows a new Shardles set in
# which a few blocks were painted as a user paints them: a block chosen by
# typing its code, a row dragged with the mouse, single clicks; the status
# bar then shows the level and its block count. When a second path is given,
# the script then chooses File > New > Tiltbash File by keyboard and takes
# the second picture. Needs xvfb-run, ImageMagick's import and libXtst.
# The build directory is $BUILD_DIR, default build-gui.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)

shardles_png=$(realpath -m "${1:-docs/screenshot.png}")
tiltbash_png=${2:+$(realpath -m "$2")}
build_dir=$(realpath -m "${BUILD_DIR:-build-gui}")

if [[ ! -f "$build_dir/build.ninja" ]]; then
  cmake -S "$root" -B "$build_dir" -G Ninja >/dev/null
fi
log=$(mktemp)
ninja -C "$build_dir" -j2 shardles-editor >"$log" 2>&1 || { cat "$log"; rm -f "$log"; exit 1; }
rm -f "$log"
mkdir -p "$(dirname "$shardles_png")"
[[ -n "$tiltbash_png" ]] && mkdir -p "$(dirname "$tiltbash_png")"

keys_py=$(mktemp --suffix=.py)
trap 'rm -f "$keys_py"' EXIT
# Types keys and moves the mouse on the X display through the XTest
# extension. Each argument is a chord of key names joined by "+" (alt+f),
# "click:X,Y" or "drag:X1,Y1,X2,Y2" (left button, in screen pixels).
cat >"$keys_py" <<'PY'
import ctypes, sys, time
x11 = ctypes.cdll.LoadLibrary("libX11.so.6")
xtst = ctypes.cdll.LoadLibrary("libXtst.so.6")
x11.XOpenDisplay.restype = ctypes.c_void_p
x11.XStringToKeysym.restype = ctypes.c_ulong
x11.XKeysymToKeycode.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
xtst.XTestFakeKeyEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]
xtst.XTestFakeMotionEvent.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_int, ctypes.c_int, ctypes.c_ulong]
xtst.XTestFakeButtonEvent.argtypes = [ctypes.c_void_p, ctypes.c_uint, ctypes.c_int, ctypes.c_ulong]
x11.XFlush.argtypes = [ctypes.c_void_p]
display = x11.XOpenDisplay(None)
if not display:
    sys.exit("no X display")
names = {"alt": "Alt_L", "ctrl": "Control_L", "shift": "Shift_L"}
xtst.XTestFakeMotionEvent(display, -1, 800, 600, 0)
x11.XFlush(display)
time.sleep(0.2)
# There is no window manager to give the window the keyboard: hand it over directly.
x11.XDefaultRootWindow.restype = ctypes.c_ulong
x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
root = x11.XDefaultRootWindow(display)
ret_root, child = ctypes.c_ulong(), ctypes.c_ulong()
ints = [ctypes.c_int() for _ in range(4)]
mask = ctypes.c_uint()
x11.XQueryPointer.argtypes = [ctypes.c_void_p, ctypes.c_ulong] + [ctypes.c_void_p] * 7
x11.XQueryPointer(display, root, ctypes.byref(ret_root), ctypes.byref(child), *[ctypes.byref(i) for i in ints],
                  ctypes.byref(mask))
if child.value:
    x11.XSetInputFocus.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_ulong]
    x11.XSetInputFocus(display, child.value, 2, 0)  # RevertToParent, CurrentTime
    x11.XFlush(display)
    time.sleep(0.3)
def move(x, y):
    xtst.XTestFakeMotionEvent(display, -1, x, y, 0)
    x11.XFlush(display)
    time.sleep(0.05)
def button(down):
    xtst.XTestFakeButtonEvent(display, 1, 1 if down else 0, 0)
    x11.XFlush(display)
    time.sleep(0.1)
for chord in sys.argv[1:]:
    if chord.startswith(("click:", "drag:")):
        points = [int(v) for v in chord.split(":", 1)[1].split(",")]
        move(points[0], points[1])
        button(True)
        if len(points) == 4:
            # In small steps, as a hand moves it.
            for k in range(1, 21):
                move(points[0] + (points[2] - points[0]) * k // 20, points[1] + (points[3] - points[1]) * k // 20)
        button(False)
        time.sleep(0.3)
        continue
    codes = [x11.XKeysymToKeycode(display, x11.XStringToKeysym(names.get(k, k).encode())) for k in chord.split("+")]
    for code in codes:
        xtst.XTestFakeKeyEvent(display, code, 1, 0)
    for code in reversed(codes):
        xtst.XTestFakeKeyEvent(display, code, 0, 0)
    x11.XFlush(display)
    time.sleep(0.4)
PY

xvfb-run -a -s "-screen 0 1600x1000x24" bash -s "$build_dir" "$shardles_png" "$tiltbash_png" "$keys_py" <<'INNER'
set -euo pipefail
build_dir=$1 shardles_png=$2 tiltbash_png=$3 keys_py=$4
"$build_dir/shardles-editor" &
editor=$!
sleep 3
# The grid of a 1600x1000 screen at 96 DPI: cells 40 pixels wide from x 640,
# rows about 30 pixels high from y 384. Blocks on rows 2 and 7, a last block
# and two keys; the palette has the focus at start, so typing a digit chooses.
/usr/bin/python3 "$keys_py" 1 drag:660,458,940,458 6 click:780,518 c click:700,607 click:860,607
sleep 1
import -window root "$shardles_png"
if [[ -n "$tiltbash_png" ]]; then
  /usr/bin/python3 "$keys_py" alt+f n t
  sleep 1
  import -window root "$tiltbash_png"
fi
kill "$editor"
wait "$editor" 2>/dev/null || true
INNER
echo "wrote $shardles_png${tiltbash_png:+ and $tiltbash_png}"
