#!/usr/bin/env bash
# Checks a compiled help file against its sources, so that no page the add-in
# or a reader asks for is missing from what ships:
#
#   scripts/check-help.sh CHM [SOURCE_DIR]
#
# The .chm is unpacked with extract_chmLib (package libchm-bin) and fails the
# check when
#   - a page, style sheet or picture of SOURCE_DIR (default packaging/help) is
#     not in it;
#   - a page has no title (the contents, index and search show titles) or
#     holds a byte beyond ASCII (the viewer reads pages in the project's code
#     page; other characters are written as entities);
#   - a local link of a page (href or src, with or without #anchor) names no
#     file in the .chm, or an anchor that file does not have;
#   - an entry of the contents or the index, the default topic, or a topic of
#     topics.txt (the pages the add-in opens by path) names no file or anchor;
#   - a page is in no entry of the contents.
# Every problem is listed; the exit status is 1 when there was any.
set -euo pipefail

usage() { echo "usage: $0 CHM [SOURCE_DIR]" >&2; exit 2; }
(($# == 1 || $# == 2)) || usage

chm=$1
source_dir=${2:-$(dirname "$0")/../packaging/help}
project=$source_dir/Help.hhp

command -v extract_chmLib >/dev/null ||
  { echo "check-help: extract_chmLib not found (package libchm-bin; run scripts/install-deps.sh)" >&2; exit 1; }
[[ -f $project ]] || { echo "check-help: no Help.hhp in $source_dir" >&2; exit 1; }
[[ -f $chm ]] || { echo "check-help: $chm does not exist" >&2; exit 1; }

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
extract_chmLib "$chm" "$unpacked" >/dev/null || { echo "check-help: $chm cannot be unpacked" >&2; exit 1; }

problems=0
problem() {
  echo "check-help: $*" >&2
  problems=$((problems + 1))
}

project_option() { sed -n "s/^$1=//p" "$project" | tr -d '\r' | head -n 1; }

# A file's text on one line, so that an attribute broken over lines is found.
flat() { tr '\r\n' '  ' <"$1"; }

# Every file of the .chm, and every "file#anchor" its pages define (id or
# name attributes), looked up in memory: a help file has hundreds of links.
declare -A chm_files=() anchors=()
while IFS= read -r file; do chm_files[$file]=1; done < <(cd "$unpacked" && find . -type f | sed 's|^\./||')
pages=()
while IFS= read -r page; do pages+=("$page"); done < <(cd "$unpacked" &&
  find . -type f \( -iname '*.htm' -o -iname '*.html' \) -not -path './[#$]*' | sed 's|^\./||' | sort)
for page in "${pages[@]}"; do
  while IFS= read -r anchor; do anchors[$page#$anchor]=1; done < <(flat "$unpacked/$page" |
    grep -oiE "[[:space:]](id|name)[[:space:]]*=[[:space:]]*(\"[^\"]*\"|'[^']*')" |
    sed -E "s/^[^=]*=[[:space:]]*//; s/^[\"']//; s/[\"']\$//" || true)
done

# resolve FROM PATH: sets $resolved to the file that PATH, written in the file
# FROM of the .chm, leads to (a path in the .chm), or to "" when it leaves it.
resolve() {
  local part parts=() out=() from_dir=.
  [[ $1 == */* ]] && from_dir=${1%/*}
  IFS=/ read -r -a parts <<<"$from_dir/$2"
  for part in "${parts[@]}"; do
    case $part in
      "" | .) ;;
      ..)
        ((${#out[@]} > 0)) || { resolved=""; return; }
        unset 'out[${#out[@]}-1]'
        ;;
      *) out+=("$part") ;;
    esac
  done
  local IFS=/
  resolved="${out[*]}"
}

is_external() { [[ $1 =~ ^[A-Za-z][A-Za-z0-9+.-]*: || $1 == //* ]]; }

# check_reference WHERE FROM REFERENCE: REFERENCE, made from the file FROM of
# the .chm, must name a file of the .chm and, after a "#", an anchor in it.
check_reference() {
  local where=$1 from=$2 reference=$3 path anchor="" target
  path=${reference%%#*}
  [[ $reference == *#* ]] && anchor=${reference#*#}
  if [[ -z $path ]]; then
    target=$from
  else
    resolve "$from" "$path"
    target=$resolved
  fi
  if [[ -z $target || -z ${chm_files[$target]:-} ]]; then
    problem "$where \"$reference\" names no file in $chm"
  elif [[ -n $anchor && -z ${anchors[$target#$anchor]:-} ]]; then
    problem "$where \"$reference\": $target has no anchor \"$anchor\""
  fi
}

# The href and src values of a page, one a line.
links_of() {
  flat "$1" | grep -oiE "(href|src)[[:space:]]*=[[:space:]]*(\"[^\"]*\"|'[^']*')" |
    sed -E "s/^[^=]*=[[:space:]]*//; s/^[\"']//; s/[\"']\$//" || true
}

# The Local values of a contents or index file, one a line.
locals_of() {
  flat "$1" | grep -oiE 'name="Local"[[:space:]]+value="[^"]*"' | sed -E 's/.*value="//; s/"$//' || true
}

# 1. Everything a reader sees of the sources is in the .chm.
source_files=0
while IFS= read -r file; do
  source_files=$((source_files + 1))
  [[ -n ${chm_files[$file]:-} ]] || problem "$file of $source_dir is not in $chm"
done < <(cd "$source_dir" && find . -type f \( -iname '*.htm' -o -iname '*.html' -o -iname '*.css' -o -iname '*.png' \
  -o -iname '*.gif' -o -iname '*.jpg' -o -iname '*.jpeg' -o -iname '*.ico' \) | sed 's|^\./||' | sort)
((source_files > 0)) || problem "$source_dir holds no pages"

# 2. Every page of the .chm: a title, plain ASCII, links that resolve.
links=0
for page in "${pages[@]}"; do
  flat "$unpacked/$page" | grep -qiE '<title>[^<]*[^<[:space:]][^<]*</title>' || problem "$page: no title"
  if LC_ALL=C grep -qP '[^\x00-\x7F]' "$unpacked/$page"; then
    problem "$page: holds characters beyond ASCII (write them as entities)"
  fi
  while IFS= read -r link; do
    is_external "$link" && continue
    links=$((links + 1))
    check_reference "$page: link" "$page" "$link"
  done < <(links_of "$unpacked/$page")
done

# 3. Contents, index, default topic and the add-in's topics lead somewhere.
in_contents=" "
entries=0
for option in "Contents file" "Index file"; do
  file=$(project_option "$option")
  if [[ -z $file ]]; then
    problem "Help.hhp names no $option"
    continue
  fi
  if [[ -z ${chm_files[$file]:-} ]]; then
    problem "$file ($option) is not in $chm"
    continue
  fi
  count=0
  while IFS= read -r entry; do
    count=$((count + 1))
    check_reference "$file: entry" "$file" "$entry"
    if [[ $option == "Contents file" ]]; then
      resolve "$file" "${entry%%#*}"
      in_contents+="$resolved "
    fi
  done < <(locals_of "$unpacked/$file")
  ((count > 0)) || problem "$file ($option) has no entries"
  entries=$((entries + count))
done

default_topic=$(project_option "Default topic")
if [[ -n $default_topic ]]; then
  check_reference "Help.hhp: Default topic" "." "$default_topic"
else
  problem "Help.hhp names no Default topic"
fi

topics=0
if [[ -f $source_dir/topics.txt ]]; then
  while IFS= read -r topic; do
    topics=$((topics + 1))
    check_reference "topics.txt: topic" "." "$topic"
  done < <(grep -oE '^[[:space:]]*QORVANE_HELP_TOPIC\([^)]*\)' "$source_dir/topics.txt" | sed -E 's/.*"([^"]*)".*/\1/')
  ((topics > 0)) || problem "topics.txt names no topic"
fi

for page in "${pages[@]}"; do
  [[ $in_contents == *" $page "* ]] || problem "$page: in no entry of the contents"
done

if ((problems > 0)); then
  echo "check-help: $chm: $problems problem(s)" >&2
  exit 1
fi
echo "check-help: $chm: ${#pages[@]} pages, $links local links, $entries contents and index entries," \
  "$topics topics: all resolve"
