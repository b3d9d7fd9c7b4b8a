# Alt+k inserts what is picked in the browser of kigou into the line that is being typed. To be
# sourced in ~/.bashrc; bash 4 or later.
#
# The usual keymap has nothing on Alt+k. In vi's, Escape and k are two keys that mean something,
# so nothing is bound there. KIGOU_KEY, set before, is another key in both, as bind writes it:
# KIGOU_KEY='\C-xk'.

_kigou_insert() {
  local said picks
  if said=$(command kigou --pick 2>&1); then
    picks=${said##*$'\n'}
    said=${said%"$picks"}
    READLINE_LINE=${READLINE_LINE:0:READLINE_POINT}$picks${READLINE_LINE:READLINE_POINT}
    ((READLINE_POINT += ${#picks}))
  fi
  [[ -z $said ]] || printf '%s\n' "${said%$'\n'}" >&2
  # The browser has switched it off for the terminal.
  [[ $(bind -v) != *'enable-bracketed-paste on'* ]] || printf '\e[?2004h' >&2
}

if [[ $- == *i* ]]; then
  bind -m emacs -x "\"${KIGOU_KEY:-\\ek}\": _kigou_insert"
  [[ -z ${KIGOU_KEY-} ]] || bind -m vi-insert -x "\"$KIGOU_KEY\": _kigou_insert"
fi
