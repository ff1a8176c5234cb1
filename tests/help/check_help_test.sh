#!/usr/bin/env bash
# Shows that the help scripts catch what they are there to catch: each case
# damages a copy of the help sources in one way and expects the named script
# to fail with a message naming the fault. For the check, the damaged copy is
# compiled with chmcmd directly, since the check must catch these faults even
# in a .chm that was not built by build-help.sh (which already refuses what
# chmcmd calls an error, such as an undefined anchor). The undamaged copy must
# pass both scripts, so that every failure below is the damage's doing.
#
#   tests/help/check_help_test.sh SOURCE_ROOT
set -uo pipefail

root=${1:?usage: $0 SOURCE_ROOT}
build=$root/scripts/build-help.sh
check=$root/scripts/check-help.sh
sources=$root/packaging/help

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# name | script expected to fail (build or check) | text its output must hold |
# the damage, run inside the copy
cases=(
  "broken link|check|getting_started.html: link \"qorvane_folde.html\" names no file|sed -i '0,/href=\"qorvane_folder.html\"/s//href=\"qorvane_folde.html\"/' getting_started.html"
  "broken anchor|check|qorvane_folder.html: link \"troubleshooting.html#no-such-place\": troubleshooting.html has no anchor \"no-such-place\"|sed -i 's/troubleshooting.html#open-mail/troubleshooting.html#no-such-place/' qorvane_folder.html"
  "broken anchor on the same page|check|troubleshooting.html: link \"#nowhere\": troubleshooting.html has no anchor|sed -i 's/href=\"#disabled\"/href=\"#nowhere\"/' troubleshooting.html"
  "missing style sheet|check|index.html: link \"help2.css\" names no file|sed -i 's/href=\"help.css\"/href=\"help2.css\"/' index.html"
  "missing picture|check|index.html: link \"pictures/qorvane.png\" names no file|sed -i 's|<h1>|<h1><img src=\"pictures/qorvane.png\" alt=\"\">|' index.html"
  "link out of the help|check|dialog_about.html: link \"../README.html\" names no file|sed -i 's|href=\"troubleshooting.html\">Troubleshooting|href=\"../README.html\">Troubleshooting|' dialog_about.html"
  "page left out of the project|check|extra.html of|sed 's/The About box/Extra/' dialog_about.html >extra.html"
  "page left out of the contents|check|extra.html: in no entry of the contents|sed 's/The About box/Extra/' dialog_about.html >extra.html && sed -i 's/^help.css\$/extra.html\\nhelp.css/' Help.hhp"
  "contents entry without its page|check|Help.hhc: entry \"recurrence_dayly.html\" names no file|sed -i 's/\"recurrence_daily.html\"/\"recurrence_dayly.html\"/' Help.hhc"
  "index entry without its anchor|check|send_and_exit.html has no anchor \"examples\"|sed -i 's/send_and_exit.html#example\"/send_and_exit.html#examples\"/' Help.hhk"
  "topic the add-in opens is missing|check|topics.txt: topic \"dialog_onse.html\" names no file|sed -i 's/\"dialog_once.html\"/\"dialog_onse.html\"/' topics.txt"
  "topic list unreadable|check|topics.txt names no topic|sed -i 's/QORVANE_HELP_TOPIC/HELP_TOPIC/' topics.txt"
  "default topic is missing|check|Help.hhp: Default topic \"start.html\" names no file|sed -i 's/^Default topic=.*/Default topic=start.html/' Help.hhp"
  "page without a title|check|recurrence_daily.html: no title|sed -i 's|<title>.*</title>|<title> </title>|' recurrence_daily.html"
  "character beyond ASCII|check|index.html: holds characters beyond ASCII|sed -i 's|in three steps|in three steps \xe2\x80\x94|I' index.html"
  "broken anchor, built|build|Anchor troubleshooting.html#no-such-place undefined|sed -i 's/troubleshooting.html#open-mail/troubleshooting.html#no-such-place/' qorvane_folder.html"
  "contents file missing|build|Can't find TOC file|rm Help.hhc"
  "project names a missing page|build|chmcmd failed|sed -i 's/^help.css\$/gone.html\\nhelp.css/' Help.hhp"
)

failed=0
fail() {
  echo "FAIL: $*"
  failed=$((failed + 1))
}

# compile SRC OUT: Help.chm of SRC into OUT, whatever chmcmd complains about.
compile() {
  mkdir -p "$2"
  (cd "$1" && chmcmd Help.hhp) >/dev/null 2>&1
  mv "$1/Help.chm" "$2/Help.chm"
}

# run_case NAME SCRIPT DAMAGE: copies the sources, damages them, and runs
# SCRIPT (build: build-help.sh; check: compile, then check-help.sh; both: the
# two scripts in a row). Sets rc to the status, out to the output's file.
run_case() {
  local name=$1 script=$2 damage=$3 dir=$work/${1// /_}
  mkdir -p "$dir"
  cp -R "$sources" "$dir/src"
  if [[ -n $damage ]]; then
    (cd "$dir/src" && eval "$damage") || { fail "$name: the damage could not be applied"; return 1; }
    if diff -rq "$sources" "$dir/src" >/dev/null; then
      fail "$name: the damage changed nothing"
      return 1
    fi
  fi
  out=$dir/out
  case $script in
    build) bash "$build" "$dir/chm" "$dir/src" >"$out" 2>&1 ;;
    check) compile "$dir/src" "$dir/chm" && bash "$check" "$dir/chm/Help.chm" "$dir/src" >"$out" 2>&1 ;;
    both) bash "$build" "$dir/chm" "$dir/src" >"$out" 2>&1 && bash "$check" "$dir/chm/Help.chm" "$dir/src" >>"$out" 2>&1 ;;
  esac
  rc=$?
}

run_case "undamaged sources" both ""
if ((rc != 0)); then
  fail "undamaged sources do not pass"
  cat "$out"
  exit 1
fi
echo "ok: undamaged sources pass"

for entry in "${cases[@]}"; do
  IFS='|' read -r name script expected damage <<<"$entry"
  run_case "$name" "$script" "$damage" || continue
  if ((rc == 0)); then
    fail "$name: $script passed"
  elif ! grep -qF -- "$expected" "$out"; then
    fail "$name: output lacks: $expected"
    cat "$out"
  else
    echo "ok: $name"
  fi
done

if ((failed > 0)); then
  echo "$failed of $((${#cases[@]} + 1)) cases failed"
  exit 1
fi
echo "all $((${#cases[@]} + 1)) cases behave"
