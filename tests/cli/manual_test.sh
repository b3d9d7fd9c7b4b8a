#!/usr/bin/env bash
# Looks at the manual pages as a reader and as the programs that set them.
#
#   manual_test.sh FOLDER-OF-PAGES
set -euo pipefail
cd -- "$1"
export LC_ALL=C.UTF-8
failed=0

# Some of what sets pages makes other characters of these, which no shell would take.
if grep -nE -- "[~^\`']|(^|[^\\])-" *.1 | grep -vE ':\.(\\"|so )'; then
  echo 'these lines hold signs that may not be shown as they are typed'
  failed=1
fi
for page in *.1; do
  [[ $page == kigou-info.1 ]] && continue
  if command -v mandoc >/dev/null; then
    # The pages have no date, so that a build comes out the same on another day.
    complaints=$(mandoc -T lint -W warning "$page" | grep -v 'missing date' || true)
    [[ -z $complaints ]] || { printf '%s\n' "$complaints"; failed=1; }
  fi
  if command -v man >/dev/null && man --version >/dev/null 2>&1; then
    complaints=$(man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
    [[ -z $complaints ]] || { printf '%s: %s\n' "$page" "$complaints"; failed=1; }
  fi
done
if command -v man >/dev/null && man --version >/dev/null 2>&1; then
  # The second name leads to the page of the first.
  [[ $(man -M .. -P cat kigou-info) == *'kigou show'* ]] || { echo 'man finds no kigou-info'; failed=1; }
fi

# What a reader copies from a page is what is typed.
if ! command -v mandoc >/dev/null; then
  echo 'there is no mandoc here, so the text of the pages is not looked at'
  exit $((failed ? 1 : 77))
fi
shown() {
  local text
  text=$(mandoc -O width=400 -T utf8 "$1" | sed 's/.\x08//g')
  [[ $text == *"$2"* ]] || { printf '%s does not show %s\n' "$1" "$2"; failed=1; }
}
shown kigou.1 'kigou-recover(1)'
shown kigou.1 '~/.local/share/kigou/*.kig'
shown kigou.1 'kigou list 一般記号/矢印 --codes'
shown kigou-list.1 'kigou list [OPTION]... [PATH]'
shown kigou-list.1 "  kigou list 一般記号/矢印 -f '%(symbol) %(kuten) %(name)'"
shown kigou-list.1 '%(code), \t, \n'
shown kigou-list.1 'in the standard set, 標準の記号, or in the file that --file names.'
shown kigou-export.1 '--format text|json|tsv'
shown kigou-check.1 '0 clean, 1 findings, 2 a file cannot be read.'
exit "$failed"
