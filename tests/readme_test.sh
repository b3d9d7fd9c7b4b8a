#!/usr/bin/env bash
# Runs the commands that README.md shows with their output and compares it.
#
#   readme_test.sh README FOLDER-OF-KIGOU
#
# A block that begins with "```sh tested" is run; all its commands must exit 0. A "```text"
# block that follows directly is what they print.
set -euo pipefail
readme=$1
top=$(cd -- "$(dirname -- "$readme")" && pwd)
PATH=$2:$PATH
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export XDG_DATA_HOME=$scratch/data
unset KIGOU_PROGRAM_DIR KIGOU_COMMON_DIR KIGOU_USER_DIR

ran=0
failed=0
commands='' shown='' block='' wanted=no

check() {
  [[ -n $commands ]] || return 0
  ran=$((ran + 1))
  if ! printed=$(cd "$top" && bash -eu -c "$commands" 2>&1); then
    printf 'does not exit 0: %s%s\n' "$commands" "$printed"
    failed=1
  elif [[ $wanted == yes && $printed != "${shown%$'\n'}" ]]; then
    printf 'prints something else: %s' "$commands"
    diff <(printf '%s' "$shown") <(printf '%s\n' "$printed") || true
    failed=1
  fi
  commands='' shown='' wanted=no
}

while IFS= read -r line; do
  if [[ -n $block ]]; then
    if [[ $line == '```' ]]; then
      block=''
    elif [[ $block == commands ]]; then
      commands+=$line$'\n'
    elif [[ $block == shown ]]; then
      shown+=$line$'\n'
    fi
    continue
  fi
  case $line in
    '```sh tested')
      check
      block=commands
      ;;
    '```text')
      block=other
      if [[ -n $commands ]]; then
        block=shown
        wanted=yes
      fi
      ;;
    '```'*)
      check
      block=other
      ;;
    '') ;;
    *) check ;;
  esac
done <"$readme"
check

# The programs and documents that it names.
while IFS= read -r path; do
  if [[ ! -e $top/$path ]]; then
    printf 'names %s, which does not exist\n' "$path"
    failed=1
  fi
done < <(grep -oE '\b(scripts|docs|examples|include|cmake|data)/[A-Za-z0-9_.-]+\b' "$readme" | sort -u)

printf '%d blocks run\n' "$ran"
((ran > 0 && failed == 0))
