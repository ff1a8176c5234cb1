#!/usr/bin/env bash
# Builds the fuzz targets (preset asan) and runs each for a while over its
# corpus, one after the other; fails if any finds something.
#
#   bash scripts/fuzz.sh [SECONDS] [TARGET...]    (default: 600 s, every target)
#
# Targets: schedule_line registry_file date_text view_xml ignore_list
# tool_args. Inputs a run finds new collect in build/asan/fuzz/runs/TARGET/
# corpus and are kept for the next run. A run goes on past crashes (in
# libFuzzer's fork mode) and keeps each in .../artifacts/ with its report;
# those of fuzz/known_findings.txt are recognised and dropped. CI runs each
# target for 20 s through ctest (label fuzz).
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=600
if [[ ${1:-} =~ ^[0-9]+$ ]]; then
  seconds=$1
  shift
fi
targets=("$@")
if ((${#targets[@]} == 0)); then
  targets=(schedule_line registry_file date_text view_xml ignore_list tool_args)
fi

bash scripts/install-deps.sh
cmake --preset asan >/dev/null
cmake --build --preset asan --target qorvane_fuzzers

failed=()
for target in "${targets[@]}"; do
  echo "=== fuzz $target for $seconds s"
  if ! bash fuzz/run_fuzzer.sh "build/asan/fuzz/fuzz_$target" "$target" "$seconds" "build/asan/fuzz/runs/$target" \
    -fork=1 -ignore_crashes=1 -ignore_ooms=1 -ignore_timeouts=1; then
    failed+=("$target")
  fi
done
if ((${#failed[@]})); then
  echo "fuzz.sh: findings or stale known findings in: ${failed[*]}" >&2
  exit 1
fi
echo "fuzz.sh: no findings"
