#!/usr/bin/env bash
# Runs the built qorvane executable the way a user or another script does and
# checks its exact bytes on stdout (no CR added, natively or under wine), its
# exit codes and that errors go to stderr. The commands themselves are tested
# in-process (tool_tests). Called by CTest as:  tool_cli_test.sh TOOL [EMULATOR...]
# (the windows build passes wine as the emulator).
set -uo pipefail

tool=$1
shift
runner=("$@" "$tool")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QORVANE_HOME=$work/home
mkdir -p "$QORVANE_HOME"

failed=0
pass() { printf 'ok   %s\n' "$1"; }
fail() { failed=$((failed + 1)); printf 'FAIL %s\n  %s\n' "$1" "$2"; }

# check NAME EXPECTED_CODE EXPECTED_STDOUT (exact, or "-" for anything) -- ARGS...
# stderr must be empty on exit 0 and hold one line otherwise.
check() {
  local name=$1 want_code=$2 want_out=$3
  shift 4
  "${runner[@]}" "$@" >"$work/out" 2>"$work/err" </dev/null
  local code=$? lines
  lines=$(wc -l <"$work/err")
  if [[ $code != "$want_code" ]]; then
    fail "$name" "exit code $code, expected $want_code; stderr: $(cat "$work/err")"
  elif [[ $want_out != - ]] && ! printf '%s' "$want_out" | cmp -s - "$work/out"; then
    fail "$name" "stdout differs:$(printf '%s' "$want_out" | diff - "$work/out" | sed 's/^/    /')"
  elif ((want_code == 0 && $(wc -c <"$work/err") != 0)) || ((want_code != 0 && lines != 1)); then
    fail "$name" "stderr: $(cat "$work/err")"
  else
    pass "$name"
  fi
}

line='1;1;0;0;0;34;1;10;0;C:\Reports\summary.pdf;C:\Reports\Weekly\;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM'

check encode-worked-example 0 "$line"$'\n' -- \
  --locale en-US encode --type 1 --interval 1 --mask 34 --occurrences 10 \
  --start 2025-03-03 --time 09:30 --attach 'C:\Reports\summary.pdf' --attach 'C:\Reports\Weekly\'

check decode-worked-example 0 'ScheduleTime=1899-12-30 00:00:00
attachment=C:\Reports\summary.pdf
attachment=C:\Reports\Weekly\
IsRecurring=1
RecurrenceType=1
DayOfMonth=0
MonthOfYear=0
Instance=0
DayOfWeekMask=34
Interval=1
Occurrences=10
NoEndDate=0
StartTime=1899-12-30 09:30:00
PatternStartDate=2025-03-03 00:00:00
PatternEndDate=1899-12-30 00:00:00
' -- --locale en-US decode "$line"

check decode-bad-line 1 - -- --locale en-US decode '1;1;0;0;0;34;1;10;0'
check malformed-date 2 '' -- occurrences --type 0 --start 2025-02-30 --time 09:30 --count 1

# The log lands in the add-in folder (POSIX: $QORVANE_HOME).
if ((${#runner[@]} == 1)); then
  if grep -q 'CMailProps.ReadFromString(' "$QORVANE_HOME/Qorvane.Log" 2>/dev/null; then
    pass log-in-qorvane-home
  else
    fail log-in-qorvane-home "no entry in $QORVANE_HOME/Qorvane.Log"
  fi
fi

echo "$failed failed"
((failed == 0))
