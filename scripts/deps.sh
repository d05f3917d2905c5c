#!/usr/bin/env bash
# Installs the Debian packages the editor and its tests need, when missing.
# Usage: scripts/deps.sh run|package|test
set -euo pipefail
# libticalcs sends sets to the calculator; its pkg-config file asks for libusb's.
packages=(cmake ninja-build g++ pkg-config qt6-base-dev libgl1-mesa-dev rapidjson-dev libticalcs-dev libusb-1.0-0-dev)
# dpkg-shlibdeps, for the Debian package's dependencies.
case "${1:-run}" in package | test) packages+=(dpkg-dev) ;; esac
if [ "${1:-run}" = test ]; then
  # GoogleTest; the TI file library and the GNU Z80 assembler check our files
  # independently; clang brings libFuzzer and the sanitizer runtimes; the
  # locale definitions let a test read numbers under a decimal-comma locale.
  packages+=(libgtest-dev libgmock-dev libtifiles-dev binutils-z80 clang libclang-rt-dev locales)
  # The Debian package is built and its desktop entry, metadata and MIME
  # description checked with the freedesktop and AppStream tools.
  packages+=(desktop-file-utils appstream shared-mime-info)
  # strace shows that a save reaches the disk before it takes the old file's
  # place and holds a save up for the signal tests (pkill, from procps, sends
  # them); the race test runs a second user with setpriv (util-linux).
  packages+=(strace procps util-linux)
fi
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
