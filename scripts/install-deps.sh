#!/usr/bin/env bash
# Installs the Debian 12 packages that building, testing and benchmarking
# Qorvane need: the native and mingw-w64 toolchains, clang with its
# sanitizer and libFuzzer runtimes, googletest, Google Benchmark, libical
# (the benchmark's reference), pugixml, and wine with a
# virtual display to run the Windows build's tests (xvfb-run needs xauth,
# which xvfb only recommends), and the help compiler chmcmd (fp-utils) with
# extract_chmLib (libchm-bin) to check what it built, NSIS (makensis) for
# the setup program, and ImageMagick for the dialogs' screenshots
# (scripts/screenshots.sh). Does nothing when all are
# present, so the other scripts can call it every time.
set -euo pipefail

packages=(
  build-essential cmake g++ clang libclang-rt-14-dev
  googletest libgtest-dev libbenchmark-dev libical-dev libpugixml-dev
  mingw-w64 g++-mingw-w64-x86-64-posix
  wine wine64 xvfb xauth
  fp-utils libchm-bin nsis
  imagemagick
)

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$package")
  fi
done

if ((${#missing[@]} == 0)); then
  echo "install-deps: all ${#packages[@]} packages present"
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
sudo=()
if [[ $(id -u) != 0 ]]; then
  command -v sudo >/dev/null || { echo "install-deps: run as root (or install sudo)" >&2; exit 1; }
  sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update
"${sudo[@]}" apt-get install -y "${missing[@]}"
