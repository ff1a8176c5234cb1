#!/usr/bin/env bash
# Runs the built qorvane executable the way a user or another script does and
# checks its exact bytes on stdout, its exit codes and that errors go to
# stderr. Called by CTest as:  tool_cli_test.sh TOOL [EMULATOR...]
# (the windows build passes wine as the emulator).
set -uo pipefail

tool=$1
shift
runner=("$@" "$tool")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QORVANE_HOME=$work/home
mkdir -p "$QORVANE_HOME"

passed=0
failed=0

# check NAME EXPECTED_CODE STDOUT STDERR -- ARGS...
#   STDOUT: a file holding the exact expected bytes, "~REGEX" that the first
#   line must match, or "-" for anything; STDERR: empty, nonempty or any.
check() {
  local name=$1 want_code=$2 want_out=$3 want_err=$4
  shift 5
  "${runner[@]}" "$@" >"$work/out" 2>"$work/err" </dev/null
  local code=$? problems=()
  [[ $code == "$want_code" ]] || problems+=("exit code $code, expected $want_code")
  if [[ $want_out == "~"* ]]; then
    head -n 1 "$work/out" | grep -Eq -- "${want_out#"~"}" ||
      problems+=("first line of stdout does not match ${want_out#"~"}: $(head -n 1 "$work/out")")
  elif [[ $want_out != - ]] && ! cmp -s "$work/out" "$want_out"; then
    problems+=("stdout differs:$(diff "$want_out" "$work/out" | sed 's/^/    /')")
  fi
  case $want_err in
    empty) [[ -s $work/err ]] && problems+=("unexpected stderr: $(cat "$work/err")") ;;
    nonempty) [[ -s $work/err ]] || problems+=("nothing on stderr") ;;
  esac
  if ((${#problems[@]})); then
    failed=$((failed + 1))
    printf 'FAIL %s\n' "$name"
    printf '  %s\n' "${problems[@]}"
  else
    passed=$((passed + 1))
    printf 'ok   %s\n' "$name"
  fi
}

expect() { local f; f=$(mktemp "$work/expected.XXXXXX"); printf '%s' "$1" >"$f"; echo "$f"; }

line='1;1;0;0;0;34;1;10;0;C:\Reports\summary.pdf;C:\Reports\Weekly\;#10;9:30:00 AM#8;3/3/2025#11;12:00:00 AM'

# --- The worked example, both ways ------------------------------------------
check encode-worked-example 0 "$(expect "$line"$'\n')" empty -- \
  --locale en-US encode --type 1 --interval 1 --mask 34 --occurrences 10 \
  --start 2025-03-03 --time 09:30 --attach 'C:\Reports\summary.pdf' --attach 'C:\Reports\Weekly\'

check decode-worked-example 0 "$(expect 'ScheduleTime=1899-12-30 00:00:00
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
')" empty -- --locale en-US decode "$line"

check decode-bad-line 1 - nonempty -- --locale en-US decode '1;1;0;0;0;34;1;10;0'

# --- Listings (dates worked out from a calendar) -------------------------------
check occurrences-daily-every-3-days 0 "$(expect '2025-03-03 09:30
2025-03-06 09:30
2025-03-09 09:30
')" empty -- occurrences --type 0 --interval 3 --start 2025-03-03 --time 09:30 --count 3

check occurrences-weekly-mon-fri-every-2-weeks 0 "$(expect '2025-03-07 09:30
2025-03-17 09:30
2025-03-21 09:30
')" empty -- occurrences --type 1 --interval 2 --mask 34 --start 2025-03-05 --time 09:30 --count 3

check occurrences-monthly-day-31 0 "$(expect '2025-01-31 17:00
2025-02-28 17:00
2025-03-31 17:00
')" empty -- occurrences --type 2 --day-of-month 31 --start 2025-01-31 --time 17:00 --until 2025-04-29

check occurrences-yearly-second-tuesday-of-march 0 "$(expect '2025-03-11 09:00
2026-03-10 09:00
')" empty -- occurrences --type 6 --instance 2 --mask 4 --month 3 --start 2025-01-01 --time 09:00 --count 2

check occurrences-type-4-prints-nothing 0 "$(expect '')" empty -- \
  occurrences --type 4 --start 2025-03-03 --time 09:30 --count 5
check occurrences-type-9-prints-nothing 0 "$(expect '')" empty -- \
  occurrences --type 9 --start 2025-03-03 --time 09:30 --until 2026-01-01

# --- describe ----------------------------------------------------------------
check describe-with-last 0 \
  "$(expect $'Occurs every 1 week(s) on monday And friday effective 3/3/2025 9:30:00 AM until 4/4/2025 9:30:00 AM\n')" \
  empty -- --locale en-US describe --type 1 --mask 34 --start 2025-03-03 --time 09:30 \
  --occurrences 10 --schedule-time '2025-03-03 09:30' --last

# --- Bad input: exit 2, one message, nothing on stdout -------------------------
empty=$(expect '')
check no-command 2 "$empty" nonempty --
check unknown-command 2 "$empty" nonempty -- frobnicate
check unknown-locale 2 "$empty" nonempty -- --locale tlh-KX decode "$line"
check malformed-date 2 "$empty" nonempty -- occurrences --type 0 --start 2025-02-30 --time 09:30 --count 1
check malformed-time 2 "$empty" nonempty -- occurrences --type 0 --start 2025-03-03 --time 9h30 --count 1
check malformed-count 2 "$empty" nonempty -- occurrences --type 0 --start 2025-03-03 --time 09:30 --count ten
check missing-value 2 "$empty" nonempty -- occurrences --type 0 --start 2025-03-03 --time 09:30 --count
check missing-limit 2 "$empty" nonempty -- occurrences --type 0 --start 2025-03-03 --time 09:30
check decode-without-line 2 "$empty" nonempty -- decode

# --- Help ----------------------------------------------------------------------
check help 0 '~^Usage: qorvane \[--locale NAME\] COMMAND' empty -- --help
check command-help 0 '~^Usage: qorvane encode ' empty -- encode --help

# --- The log lands in the add-in folder (POSIX: $QORVANE_HOME) ------------------
if ((${#runner[@]} == 1)); then
  if grep -q 'CMailProps.ReadFromString(' "$QORVANE_HOME/Qorvane.Log" 2>/dev/null; then
    passed=$((passed + 1)); echo "ok   log-in-qorvane-home"
  else
    failed=$((failed + 1)); echo "FAIL log-in-qorvane-home: no entry in $QORVANE_HOME/Qorvane.Log"
  fi
fi

echo "$passed passed, $failed failed"
((failed == 0))
