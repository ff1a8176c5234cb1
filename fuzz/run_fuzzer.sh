#!/usr/bin/env bash
# Runs one fuzz target for a while over its committed corpus and fails on a
# finding. Called by CTest (briefly) and by scripts/fuzz.sh (for longer):
#
#   run_fuzzer.sh FUZZER NAME SECONDS WORK_DIR [LIBFUZZER_OPTION...]
#
# Seeds come from fuzz/corpus/NAME/; inputs the run finds new go to
# WORK_DIR/corpus (kept between runs), crashes to WORK_DIR/artifacts/.
# Seeds listed in fuzz/known_findings.txt reproduce bugs that are not fixed
# yet: they are left out of the run and each is tried on its own instead, so
# that they still show, and the script fails once one no longer reproduces
# (then its line goes, and it guards against the bug's return like any seed).
set -uo pipefail

fuzzer=$1 name=$2 seconds=$3 work=$4
shift 4
here=$(cd "$(dirname "$0")" && pwd)
corpus=$here/corpus/$name
dict=$here/dict/$name.dict

# Limits of one input: 10 s, 2 GB resident, 1 GB in one allocation. Real
# inputs take milliseconds; what needs more is a finding.
limits=(-timeout=10 -rss_limit_mb=2048 -malloc_limit_mb=1024)

# The known findings of this target: seed file names and report patterns.
known=()
known_patterns=()
if [[ -f $here/known_findings.txt ]]; then
  while IFS= read -r line; do
    line=${line%%  #*}
    [[ $line =~ ^[[:space:]]*(#|$) ]] && continue
    read -r target file patterns <<<"$line"
    [[ $target == "$name" ]] || continue
    known+=("$file")
    known_patterns+=("$patterns")
  done <"$here/known_findings.txt"
fi

# Whether the log holds every pattern ("A && B") of a known finding.
matches() {
  local log=$1 pattern
  local -a parts
  IFS=$'\x01' read -r -a parts <<<"${2// && /$'\x01'}"
  for pattern in "${parts[@]}"; do
    grep -q -E -- "$pattern" "$log" || return 1
  done
}

mkdir -p "$work/corpus" "$work/artifacts"
rm -rf "$work/seeds"
mkdir -p "$work/seeds"
for seed in "$corpus"/*; do
  [[ -f $seed ]] || continue
  base=$(basename "$seed")
  skip=0
  for file in "${known[@]}"; do [[ $file == "$base" ]] && skip=1; done
  ((skip)) || cp "$seed" "$work/seeds/"
done

failed=0
for i in "${!known[@]}"; do
  file=${known[i]}
  if [[ ! -f $corpus/$file ]]; then
    echo "fuzz $name: known finding $file is not in $corpus"
    failed=1
  elif "$fuzzer" "${limits[@]}" "$corpus/$file" >"$work/known.log" 2>&1; then
    echo "fuzz $name: known finding $file no longer reproduces: remove its line from fuzz/known_findings.txt"
    failed=1
  elif matches "$work/known.log" "${known_patterns[i]}"; then
    echo "fuzz $name: known finding $file still reproduces (${known_patterns[i]})"
  else
    echo "fuzz $name: known finding $file now fails otherwise; log $work/known.log:"
    tail -20 "$work/known.log"
    failed=1
  fi
done

options=("${limits[@]}" -max_total_time="$seconds" -print_final_stats=1 -artifact_prefix="$work/artifacts/")
[[ -f $dict ]] && options+=(-dict="$dict")
rm -f "$work"/artifacts/*
"$fuzzer" "${options[@]}" "$@" "$work/corpus" "$work/seeds" >"$work/fuzz.log" 2>&1
status=$?
# libFuzzer's last progress line: executions, coverage, features.
grep -E '^#[0-9]+' "$work/fuzz.log" | tail -1 | sed "s/^/fuzz $name: /"
grep -E '^stat::number_of_executed_units' "$work/fuzz.log" | sed "s/^/fuzz $name: /"

# Each input the run kept as a crash, timeout or leak is tried alone: the
# report of a known finding makes it that finding, anything else is new.
# (A plain run stops at its first; with -fork=1 -ignore_crashes=1 ... it
# goes on and may keep several.)
found=0
for artifact in "$work"/artifacts/*; do
  [[ -f $artifact ]] || continue
  found=1
  "$fuzzer" "${limits[@]}" "$artifact" >"$artifact.log" 2>&1
  known_hit=
  for i in "${!known[@]}"; do
    matches "$artifact.log" "${known_patterns[i]}" && known_hit="${known[i]} (${known_patterns[i]})"
  done
  if [[ -n $known_hit ]]; then
    echo "fuzz $name: $(basename "$artifact") is the known finding $known_hit"
    rm -f "$artifact" "$artifact.log"
  else
    echo "fuzz $name: FINDING $artifact; its report, $artifact.log:"
    if grep -q -E 'ERROR: |fuzz check failed|runtime error' "$artifact.log"; then
      grep -A40 -m1 -E 'ERROR: |fuzz check failed|runtime error' "$artifact.log" | head -60
    else
      tail -20 "$artifact.log"
    fi
    failed=1
  fi
done
if ((status != 0 && !found)); then
  echo "fuzz $name: the run failed (exit $status) without an input to show; log $work/fuzz.log:"
  tail -20 "$work/fuzz.log"
  failed=1
fi
exit $failed
