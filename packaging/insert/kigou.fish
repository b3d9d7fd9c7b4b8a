# Alt+k inserts what is picked in the browser of kigou into the line that is being typed. To be
# sourced in ~/.config/fish/config.fish.
#
# The usual keymap has nothing on Alt+k. In vi's, Escape and k are two keys that mean something,
# so nothing is bound there. KIGOU_KEY, set before, is another key in both, as bind takes it:
# set KIGOU_KEY \cxk

function kigou_insert
    set -l said (command kigou --pick 2>&1)
    if test $status = 0
        commandline -i -- $said[-1]
        set -e said[-1]
    end
    set -q said[1]
    and printf '\n%s' $said\n >/dev/tty
    # The browser has switched bracketed paste off for the terminal.
    printf '\e[?2004h' >/dev/tty
    commandline -f repaint
end

if status is-interactive
    if set -q KIGOU_KEY
        bind $KIGOU_KEY kigou_insert
        bind -M insert $KIGOU_KEY kigou_insert
    else if test "$fish_key_bindings" != fish_vi_key_bindings
        bind \ek kigou_insert
    end
end
