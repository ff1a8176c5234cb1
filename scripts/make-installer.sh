#!/usr/bin/env bash
# Makes the setup program from add-in DLLs that are already built: compiles
# the help, checks that each DLL is of the bitness it is given as, exports
# the four COM entry points and imports only system DLLs, and runs makensis
# on packaging/qorvane.nsi.
#
#   scripts/make-installer.sh OUT_EXE VERSION DLL_X64 [DLL_X86]
#
# Without DLL_X86 the setup serves 64-bit Outlook only (the tests' build).
# scripts/package.sh builds both DLLs and calls this.
set -euo pipefail

usage() { echo "usage: $0 OUT_EXE VERSION DLL_X64 [DLL_X86]" >&2; exit 2; }
(($# == 3 || $# == 4)) || usage
out_exe=$1 version=$2 dll_x64=$3 dll_x86=${4:-}
root=$(cd "$(dirname "$0")/.." && pwd)

[[ $version =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]] || { echo "make-installer: version '$version' is not x.y.z" >&2; exit 2; }
command -v makensis >/dev/null ||
  { echo "make-installer: makensis not found (package nsis; run scripts/install-deps.sh)" >&2; exit 1; }

# check_dll PATH POINTER_SIZE: a DLL of that bitness that Outlook and
# regsvr32 can use (cmake/CheckDll.cmake, the build's own check). A 32-bit
# DLL cannot be run here, so this is all that is checked of it before it ships.
check_dll() {
  [[ -f $1 ]] || { echo "make-installer: $1 does not exist" >&2; exit 1; }
  cmake -DOBJDUMP=x86_64-w64-mingw32-objdump -DFILE="$1" -DPOINTER_SIZE="$2" -P "$root/cmake/CheckDll.cmake" >/dev/null ||
    { echo "make-installer: $1 is not a ${2}-byte-pointer add-in DLL" >&2; exit 1; }
}

check_dll "$dll_x64" 8
defines=(-DVERSION="$version" -DDLL_X64="$(realpath "$dll_x64")")
if [[ -n $dll_x86 ]]; then
  check_dll "$dll_x86" 4
  defines+=(-DDLL_X86="$(realpath "$dll_x86")")
fi

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
bash "$root/scripts/build-help.sh" "$scratch" >/dev/null

mkdir -p "$(dirname "$out_exe")"
out_exe=$(realpath "$out_exe")
# makensis reads License.txt, Readme.txt and the icon relative to the script.
makensis -V2 "${defines[@]}" -DHELP_CHM="$scratch/Help.chm" -DOUTFILE="$out_exe" \
  "$root/packaging/qorvane.nsi" >"$scratch/makensis.log" 2>&1 ||
  { cat "$scratch/makensis.log" >&2; echo "make-installer: makensis failed" >&2; exit 1; }
echo "make-installer: wrote $out_exe ($(stat -c %s "$out_exe") bytes)"
