#!/bin/sh
# What is said in the input method, in Japanese: nothing is forgotten, nothing is left over, and
# each part has its place.
#
# usage: translations_test.sh FOLDER-OF-SOURCES
set -eu
cd "$1"
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
find fcitx picker -name '*.cpp' -o -name '*.h' | sort |
  xgettext --files-from=- --language=C++ --from-code=UTF-8 --no-wrap \
    --keyword --keyword=_ --keyword=sentence --output=- |
  sed '/^msgid "./i #, python-brace-format' >"$work/said.pot"
{
  msgcmp fcitx/po/ja.po "$work/said.pot" || true
  msgmerge --quiet --no-fuzzy-matching fcitx/po/ja.po "$work/said.pot" |
    msgattrib --clear-fuzzy | # which msgmerge says of a place that is wrong
    msgfmt --check-format --output-file=/dev/null - || true
} >"$work/wrong" 2>&1
cat "$work/wrong"
grep -q '{1}' "$work/said.pot" && test ! -s "$work/wrong"
