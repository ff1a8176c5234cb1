#!/usr/bin/env bash
# Takes a screenshot of every dialog, and of every page of the recurrence
# dialog, as wine draws them under a virtual display: one PNG each, cropped
# to the dialog, in the folder given (default build/screenshots; not part of
# the repository). Open each one and look: nothing clipped, overlapping or
# unreadable, accelerators underlined, the right page shown.
#
# The prefix is made fresh every time, with wine's own fonts installed into
# it (Debian's wine does not find them otherwise, and the dialogs would be
# drawn in a stand-in font) and wine drawing the window frames itself (no
# window manager runs under Xvfb).
set -euo pipefail
cd "$(dirname "$0")/.."
out=$(realpath -m "${1:-build/screenshots}")

if [[ -z ${QORVANE_SCREENSHOTS_DISPLAY:-} ]]; then
  bash scripts/install-deps.sh
  cmake --preset windows >/dev/null
  cmake --build --preset windows --target form_screenshots
  exec env QORVANE_SCREENSHOTS_DISPLAY=1 xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$out"
fi

prefix=$PWD/build/windows/screenshots-prefix
rm -rf "$prefix"
mkdir -p "$prefix"
export WINEPREFIX=$prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
wineboot -i >/dev/null 2>&1
mkdir -p "$prefix/drive_c/windows/Fonts"
cp /usr/share/wine/fonts/*.ttf "$prefix/drive_c/windows/Fonts/"
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null
wineserver -w

mkdir -p "$out"
rm -f "$out"/*.png
taken=0
coproc SHOTS { wine build/windows/tests/win/form_screenshots.exe; }
shots_pid=$SHOTS_PID
while IFS=' ' read -r -u "${SHOTS[0]}" word name left top right bottom; do
  bottom=${bottom%$'\r'}
  if [[ $word != SHOT ]]; then
    echo "$word $name $left $top $right $bottom"
    continue
  fi
  [[ -n ${QORVANE_SCREENSHOTS_FULL:-} ]] && import -window root "$out/$name-full.png"
  import -window root -crop "$((right - left))x$((bottom - top))+$left+$top" +repage "$out/$name.png"
  echo "screenshots: $out/$name.png"
  taken=$((taken + 1))
  echo ok >&"${SHOTS[1]}"
done
status=0
wait "$shots_pid" || status=$?
wineserver -w
echo "screenshots: $taken taken"
exit "$status"
