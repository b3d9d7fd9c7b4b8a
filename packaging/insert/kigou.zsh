# Alt+k inserts what is picked in the browser of kigou into the line that is being typed. To be
# sourced in ~/.zshrc.
#
# The usual keymap has nothing on Alt+k. In vi's, Escape and k are two keys that mean something,
# so nothing is bound there. KIGOU_KEY, set before, is another key in both, as bindkey writes it:
# KIGOU_KEY='^Xk'.

kigou-insert() {
  emulate -L zsh
  local said picks
  if said=$(command kigou --pick 2>&1); then
    picks=${said##*$'\n'}
    said=${said%"$picks"}
    LBUFFER+=$picks
  fi
  # The browser has switched bracketed paste off for the terminal.
  (( ! $+zle_bracketed_paste )) || print -rn -- $zle_bracketed_paste[1] >/dev/tty
  zle reset-prompt
  [[ -z $said ]] || zle -M ${said%$'\n'}
}

zle -N kigou-insert
bindkey -M emacs ${KIGOU_KEY:-'^[k'} kigou-insert
[[ -z ${KIGOU_KEY-} ]] || bindkey -M viins $KIGOU_KEY kigou-insert
