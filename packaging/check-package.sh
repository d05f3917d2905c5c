#!/bin/sh
# Builds the Debian package from a finished build and checks it: every file
# the install puts in place is in the package, the dependencies name the
# libraries, the desktop entry, AppStream metadata and MIME description pass
# their own tools where those are installed, and the converter's --help, its
# manual page and the README name the same options, forms and examples.
# Usage: packaging/check-package.sh BUILD_DIR SOURCE_DIR
set -eu
build=$(cd "$1" && pwd)
source=$(cd "$2" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
fail() { echo "FAIL: $*"; failed=1; }

id=io.github.shardles_editor.Editor
expected="/usr/bin/shardles-editor /usr/bin/shardles-convert /usr/bin/shardles-render
/usr/share/man/man1/shardles-render.1 /usr/share/thumbnailers/shardles-editor.thumbnailer
/usr/share/man/man1/shardles-editor.1 /usr/share/man/man1/shardles-convert.1
/usr/share/applications/$id.desktop /usr/share/metainfo/$id.metainfo.xml
/usr/share/mime/packages/shardles-editor.xml /usr/share/shardles-editor/user-guide.md
/usr/share/shardles-editor/docs/screenshot.png /usr/share/shardles-editor/docs/window-1024x768.png
/usr/share/shardles-editor/nothing.gif /usr/share/icons/hicolor/scalable/apps/shardles-editor.svg"
for code in 1 2 3 4 5 6 7 8 9 A B C D E F; do
  expected="$expected /usr/share/shardles-editor/shdblock$code.gif /usr/share/shardles-editor/tlblock$code.gif"
done
for size in 16 22 24 32 48 64 128 256; do
  expected="$expected /usr/share/icons/hicolor/${size}x$size/apps/shardles-editor.png"
done

# The package, and its contents list.
(cd "$work" && cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work/deb" >"$work/cpack.log" 2>&1) ||
  { cat "$work/cpack.log"; exit 1; }
deb=$(ls "$work"/deb/*.deb)
dpkg-deb -c "$deb" | awk '{print $6}' | sed 's|^\.||' >"$work/contents"
for file in $expected; do grep -qx "$file" "$work/contents" || fail "not in the package: $file"; done
depends=$(dpkg-deb -f "$deb" Depends)
for package in libqt6widgets6 libticalcs2 libticables2 libtifiles2 qt6-qpa-plugins libc6; do
  echo "$depends" | grep -q "$package" || fail "Depends lacks $package: $depends"
done
echo "package: $(basename "$deb"), $(wc -l <"$work/contents") entries; Depends: $depends"

# The installed files, unpacked as apt would place them.
dpkg-deb -x "$deb" "$work/root"
share="$work/root/usr/share"
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$share/applications/$id.desktop" || fail "desktop-file-validate"
else echo "skipped: desktop-file-validate is not installed"; fi
if command -v appstreamcli >/dev/null; then
  appstreamcli validate --no-net "$share/metainfo/$id.metainfo.xml" >"$work/as.log" 2>&1 ||
    { cat "$work/as.log"; fail "appstreamcli validate"; }
else echo "skipped: appstreamcli is not installed"; fi
if command -v update-mime-database >/dev/null; then
  update-mime-database "$share/mime" >"$work/mime.log" 2>&1 || { cat "$work/mime.log"; fail "update-mime-database"; }
  for glob in rsx 83l 83p z80; do grep -q ":\*\.$glob\$" "$share/mime/globs2" || fail "no MIME glob *.$glob"; done
  grep -q "^MimeType=.*application/x-shardles-levels;" "$share/applications/$id.desktop" || fail "MimeType"
else echo "skipped: update-mime-database is not installed"; fi
# The thumbnailer covers every MIME type the package declares, and its Exec
# line, run as a file manager runs it, draws a picture within the size asked.
thumbnailer="$share/thumbnailers/shardles-editor.thumbnailer"
for type in $(grep -o 'mime-type type="[^"]*"' "$share/mime/packages/shardles-editor.xml" | cut -d'"' -f2); do
  grep -q "^MimeType=.*$type;" "$thumbnailer" || fail "the thumbnailer lacks $type"
done
exec_line=$(sed -n 's/^Exec=//p' "$thumbnailer")
cp "$source/tests/data/cli/files/shardles.json" "$work/set.json"
"$build/shardles-convert" "$work/set.json" "$work/set.83p"
# %s, %i and %o as a file manager fills them in: no word of them is split.
set -f
set -- $exec_line
set +f
for word; do
  shift
  case $word in %s) word=128 ;; %i) word="$work/set.83p" ;; %o) word="$work/thumb.png" ;; esac
  set -- "$@" "$word"
done
program=$1; shift
env -u DISPLAY -u WAYLAND_DISPLAY "$work/root/usr/bin/$program" "$@" || fail "the thumbnailer's Exec line"
# Drawing needs QtGui only: a file manager's thumbnailer stays light.
! ldd "$work/root/usr/bin/shardles-render" | grep -q libQt6Widgets || fail "shardles-render links Qt Widgets"
if [ -f "$work/thumb.png" ]; then
  set -- $(od -An -tu1 -j16 -N8 "$work/thumb.png")
  width=$(( ($1 << 24) + ($2 << 16) + ($3 << 8) + $4 )); height=$(( ($5 << 24) + ($6 << 16) + ($7 << 8) + $8 ))
  [ "$width" -le 128 ] && [ "$height" -le 128 ] && [ $((width > height ? width : height)) -ge 64 ] ||
    fail "the thumbnail is $width x $height"
else fail "the thumbnailer wrote no picture"; fi

for page in shardles-editor shardles-convert shardles-render; do
  warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$share/man/man1/$page.1" 2>&1 >/dev/null || true)
  [ -z "$warnings" ] || fail "$page.1: $warnings"
done

# Both programs answer --help from the package without a display.
env -u DISPLAY -u WAYLAND_DISPLAY "$work/root/usr/bin/shardles-editor" --help >"$work/editor-help" ||
  fail "shardles-editor --help"
"$work/root/usr/bin/shardles-convert" --help >"$work/help"
man_text() { sed -e 's/\\-/-/g' -e 's/\\(->/->/g' -e 's/\\(rs/\\/g' -e 's/\\fR//g; s/\\fP//g' "$1"; }
man_text "$source/packaging/shardles-convert.1" >"$work/man"
man_text "$source/packaging/shardles-editor.1" >"$work/editor-man"
sed -n '/^## Command-line converter/,/^## Screenshot/p' "$source/README.md" >"$work/readme"
options() { grep -o -E -- '(^|[^a-z-])--?[a-z][a-z-]*' "$1" | grep -o -E -- '--?[a-z][a-z-]*' |
  grep -v -E '^-(platform|style|ww|fsanitize.*)$' | sort -u; }
options "$work/help" >"$work/help.options"
options "$work/man" >"$work/man.options"
diff "$work/help.options" "$work/man.options" >/dev/null ||
  fail "--help and the manual page name different options: $(diff "$work/help.options" "$work/man.options" | grep '^[<>]' | tr '\n' ' ')"
for option in $(cat "$work/help.options"); do
  grep -q -- "$option" "$work/readme" || fail "the README does not describe $option"
done
for form in myfile oldmyfile list source program json; do
  grep -q "^ *$form " "$work/help" || fail "--help lacks the form $form"
  grep -q "^\.B $form\$" "$work/man" || fail "the manual page lacks the form $form"
done
for status in 0 1 2; do grep -q "^\.B $status\$" "$work/man" || fail "the manual page lacks exit status $status"; done
# The README's usage lines are --help's; every other example of its
# converter section, commands and messages, is in the manual page.
awk '/^```/{n++; next} n==1' "$work/readme" >"$work/usage"
while IFS= read -r line; do
  sed 's/^Usage: //; s/^ *//' "$work/help" | grep -qxF -- "$line" || fail "--help lacks the README's usage line: $line"
done <"$work/usage"
awk '/^```/{n++; next} n>2 && n%2==1' "$work/readme" | sed 's/  *# .*//' >"$work/examples"
while IFS= read -r line; do
  [ -z "$line" ] || grep -qxF -- "$line" "$work/man" || fail "the manual page lacks the README's example: $line"
done <"$work/examples"
for word in --help --version FILE info.ini .config/shardles-editor; do
  grep -q -- "$word" "$work/editor-help" || fail "shardles-editor --help lacks $word"
  grep -q -- "$word" "$work/editor-man" || fail "shardles-editor.1 lacks $word"
done

[ "$failed" = 0 ] && echo "package checks passed"
exit "$failed"
