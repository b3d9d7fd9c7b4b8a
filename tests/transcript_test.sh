#!/usr/bin/env bash
# Runs the commands that a document shows with their output and compares it.
#
#   transcript_test.sh DOCUMENT FOLDER-OF-KIGOU
#
# A block that begins with "```sh tested" is run; a "```text" block that follows directly is
# what it prints. So is a line that begins with "$ ", with more of it on lines that begin
# with "> "; the lines below, up to an empty one, are what it prints, the error output last,
# and "[N]" is an exit status other than 0.
#
# A ".md" is run in the top folder with the sets of the sources, another in a scratch folder
# with empty directories prog and common.
set -euo pipefail
document=$(realpath -- "$1")
if [[ $document != *.md && $EUID == 0 && -z ${TESTED_WITHOUT_RIGHTS-} ]]; then
  # File modes hold for root as well then.
  TESTED_WITHOUT_RIGHTS=yes exec setpriv --bounding-set=-dac_override "$BASH" "$0" "$@"
fi
PATH=$(realpath -- "$2"):$PATH
scratch=$(mktemp -d)
trap 'chmod -R u+w "$scratch"; rm -rf "$scratch"' EXIT
mkdir "$scratch"/{printed,tmp,place}
export XDG_DATA_HOME=$scratch/data XDG_STATE_HOME=$scratch/state TMPDIR=$scratch/tmp LC_ALL=C
unset KIGOU_PROGRAM_DIR KIGOU_COMMON_DIR KIGOU_USER_DIR
top=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
place=$top
if [[ $document != *.md ]]; then
  place=$scratch/place
  mkdir "$place"/{prog,common}
  export KIGOU_PROGRAM_DIR=prog KIGOU_COMMON_DIR=common
fi
export top
# The person's own sets come with copies of those that are shipped; a command says so once.
[[ $document != *.md ]] || kigou files >/dev/null 2>&1

# A symbol file of a title and blocks, each "［path］ line|line|"; and what a file holds.
rule=$(printf -- '-%.0s' {1..40})
kig() {
  printf '%s\n' 〈記号〉 "名称=$2" "${@:3}" | awk -v rule="$rule" '
    /^［/ { at = index($0, "］") + 3; lines = substr($0, at + 1); gsub(/\|/, "\n", lines)
            print substr($0, 1, at - 1) "\n" rule "\n" lines rule; next }
    { print }' | iconv -f UTF-8 -t EUC-JP >"$1"
}
blocks() {
  iconv -f EUC-JP -t UTF-8 "$1" | awk -v rule="$rule" '
    $0 == rule { gap = " "; if (++rules % 2 == 0) print ""; next }
    rules % 2 { printf "%s%s|", gap, $0; gap = ""; next }
    /^［/ { printf "%s", $0; next }
    NR > 1 || $0 != "〈記号〉"'
}
# JSON, one object a line.
short() { sed 's/^ *//; s/,$/, /' | tr -d '\n' | awk '{ gsub(/}, {/, "},\n{") } 1'; }
export rule
export -f kig blocks short

ran=0
failed=0
commands='' shown='' state='' wanted=no

fail() {
  printf '%s: %s' "$1" "$commands"
  failed=1
}

check() {
  [[ -n $commands ]] || return 0
  ran=$((ran + 1))
  local status=0 out=$scratch/printed/out err=$scratch/printed/err
  (cd "$place" && exec bash -eu -c "$commands" </dev/null >"$out" 2>"$err") || status=$?
  if grep -v '^kigou: ' "$err" || grep '^kigou: ' "$out"; then fail 'prints this to the wrong place'; fi
  cat "$err" >>"$out"
  [[ $status == 0 ]] || printf '[%s]\n' "$status" >>"$out"
  if [[ $wanted == yes ]]; then
    diff <(printf '%s' "$shown") "$out" || fail 'prints something else'
  elif [[ $status != 0 ]]; then
    fail "does not exit 0: $(<"$out")"$'\n'
  fi
  [[ -z $(ls "$TMPDIR") ]] || fail 'leaves a working file'
  commands='' shown='' wanted=no
}

while IFS= read -r line; do
  case $state:$line in
    commands:'```' | shown:'```' | printed: | printed:'```') state='' ;;
    commands:*) commands+=$line$'\n' ;;
    :'$ '* | printed:'$ '*)
      check
      state=printed wanted=yes
      commands=${line#\$ }$'\n'
      ;;
    printed:'> '*)
      [[ -z $shown ]] && commands+=${line#> }$'\n' || shown+=$line$'\n'
      ;;
    shown:* | printed:*) shown+=$line$'\n' ;;
    ':```sh tested')
      check
      state=commands
      ;;
    ':```text') [[ -z $commands ]] || state=shown wanted=yes ;;
    :) ;;
    *) check ;;
  esac
done <"$document"
check

# The programs and documents that it names.
while IFS= read -r path; do
  if [[ ! -e $place/$path ]]; then
    printf 'names %s, which does not exist\n' "$path"
    failed=1
  fi
done < <([[ $document != *.md ]] || grep -oE '\b(scripts|docs|examples|include|cmake|data)/[A-Za-z0-9_.-]+\b' "$document" | sort -u)

printf '%d commands run\n' "$ran"
((ran > 0 && failed == 0))
