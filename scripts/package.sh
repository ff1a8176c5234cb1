#!/usr/bin/env bash
# Builds the setup program users run, from a clean clone:
#
#   dist/Qorvane-Setup-<version>.exe
#
# holding the add-in for 64-bit Outlook (windows preset) and for 32-bit
# Outlook (windows-x86 preset), the help compiled from packaging/help, the
# licence and the readme. The version is the project's, from CMakeLists.txt.
# Only the DLL targets are built, so this is quick after scripts/test.sh.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

version=$(sed -nE 's/^project\(Qorvane VERSION ([0-9]+\.[0-9]+\.[0-9]+)[ )].*/\1/p' CMakeLists.txt)
[[ -n $version ]] || { echo "package: no 'project(Qorvane VERSION x.y.z' in CMakeLists.txt" >&2; exit 1; }

for preset in windows windows-x86; do
  echo "=== package: qorvane.dll, preset $preset"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" --target qorvane_dll
done

bash scripts/make-installer.sh "dist/Qorvane-Setup-$version.exe" "$version" \
  build/windows/win/addin/qorvane.dll build/windows-x86/win/addin/qorvane.dll
