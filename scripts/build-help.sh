#!/usr/bin/env bash
# Compiles the user help (packaging/help, a chmcmd project) into
# OUT_DIR/Help.chm, the file the add-in opens from its own folder.
#
#   scripts/build-help.sh OUT_DIR [SOURCE_DIR]
#
# SOURCE_DIR defaults to packaging/help; the tests pass altered copies. The
# sources are compiled in a scratch copy, so nothing is written next to them,
# and Help.chm replaces the old one only when the compiler succeeded. Exits
# non-zero when chmcmd is missing (scripts/install-deps.sh installs it) or
# reports an error. Broken links are only warned about here: that is what
# scripts/check-help.sh is for.
set -euo pipefail

usage() { echo "usage: $0 OUT_DIR [SOURCE_DIR]" >&2; exit 2; }
(($# == 1 || $# == 2)) || usage

out_dir=$1
source_dir=${2:-$(dirname "$0")/../packaging/help}
project=Help.hhp

[[ -f $source_dir/$project ]] || { echo "build-help: no $project in $source_dir" >&2; exit 1; }
command -v chmcmd >/dev/null ||
  { echo "build-help: chmcmd not found (package fp-utils; run scripts/install-deps.sh)" >&2; exit 1; }
mkdir -p "$out_dir"
out_dir=$(cd "$out_dir" && pwd)

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -R "$source_dir"/. "$scratch"
rm -f "$scratch/Help.chm"

# chmcmd writes the file named by "Compiled file=" relative to the project.
compiled=$(sed -n 's/^Compiled file=\(.*\)$/\1/p' "$scratch/$project" | tr -d '\r')
[[ $compiled == Help.chm ]] || { echo "build-help: $project must compile to Help.chm, not '$compiled'" >&2; exit 1; }

# chmcmd exits 0 after some errors (a missing contents or index file), so its
# "Error" lines count as failures too.
status=0
log=$(cd "$scratch" && chmcmd "$project" 2>&1) || status=$?
report=$(grep -E '^(Error|Warning|An unhandled exception|EF[A-Za-z]*Error)' <<<"$log" || true)
[[ -n $report ]] && sed 's/^/build-help: chmcmd: /' <<<"$report" >&2
if ((status != 0)) || grep -qE '^(Error|An unhandled exception)' <<<"$log" || [[ ! -s $scratch/Help.chm ]]; then
  echo "build-help: chmcmd failed (exit $status):" >&2
  echo "$log" >&2
  exit 1
fi

cp "$scratch/Help.chm" "$out_dir/.Help.chm.tmp"
mv -f "$out_dir/.Help.chm.tmp" "$out_dir/Help.chm"
echo "build-help: wrote $out_dir/Help.chm ($(stat -c %s "$out_dir/Help.chm") bytes)"
