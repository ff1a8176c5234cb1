#!/usr/bin/env bash
# Builds and runs every test on three presets: linux (native g++, which also
# builds the benchmark without running it), asan (clang with the address and
# undefined-behaviour sanitizers; its tests include a short run of each fuzz
# target) and windows (mingw-w64, the tests run under wine); then builds the
# 32-bit add-in DLL (windows-x86) and checks it, and builds the setup program
# from both DLLs (scripts/package.sh). Each runs to the end even when one
# before it failed, so each prints its summary; the script fails if any did.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

# wine wants a display for anything with a window; give it a virtual one
# when there is none (CI, ssh) and one can be started here.
windows_ctest=(ctest --preset windows)
if [[ -z ${DISPLAY:-} ]] && xvfb-run -a true 2>/dev/null; then
  windows_ctest=(xvfb-run -a "${windows_ctest[@]}")
fi

failed=()
run_preset() {
  local preset=$1
  shift
  echo "=== preset $preset"
  if cmake --preset "$preset" && cmake --build --preset "$preset" && "$@"; then
    echo "=== preset $preset: passed"
  else
    echo "=== preset $preset: FAILED"
    failed+=("$preset")
  fi
}

run_preset linux ctest --preset linux
run_preset asan ctest --preset asan
run_preset windows "${windows_ctest[@]}"
# The 32-bit add-in DLL for 32-bit Office: built and its exports and
# imports checked; the wine here cannot run 32-bit programs.
run_preset windows-x86 ctest --preset windows-x86

echo "=== package"
if bash scripts/package.sh; then
  echo "=== package: passed"
else
  echo "=== package: FAILED"
  failed+=(package)
fi

if ((${#failed[@]})); then
  echo "test.sh: failed: ${failed[*]}" >&2
  exit 1
fi
echo "test.sh: every preset and the package passed"
