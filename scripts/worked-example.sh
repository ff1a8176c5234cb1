#!/usr/bin/env bash
# Builds the qorvane command-line tool natively and walks it through the
# worked example: a weekly mail on Mondays and Fridays at 9:30, ten sends
# from 3 March 2025, with a report file and a folder attached. Shows the line
# stored on the mail, that line read back, the ten send times and the
# sentence the add-in shows for the schedule.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset linux >/dev/null
cmake --build --preset linux --target qorvane
tool=build/linux/tools/qorvane

pattern=(--type 1 --interval 1 --mask 34 --start 2025-03-03 --time 09:30)

# Echoes the command as one would type it, then runs it.
run() {
  local shown=qorvane arg
  for arg in "$@"; do
    if [[ $arg =~ ^[A-Za-z0-9_./:=+-]+$ ]]; then
      shown+=" $arg"
    else
      shown+=" '${arg//\'/\'\\\'\'}'"
    fi
  done
  printf '\n$ %s\n' "$shown"
  "$tool" "$@"
}

run --locale en-US encode "${pattern[@]}" --occurrences 10 \
  --attach 'C:\Reports\summary.pdf' --attach 'C:\Reports\Weekly\'
line=$("$tool" --locale en-US encode "${pattern[@]}" --occurrences 10 \
  --attach 'C:\Reports\summary.pdf' --attach 'C:\Reports\Weekly\')
run --locale en-US decode "$line"
run occurrences "${pattern[@]}" --count 10
run --locale en-US describe "${pattern[@]}" --occurrences 10 --schedule-time '2025-03-03 09:30' --last
