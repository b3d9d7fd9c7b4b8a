# Completion of kigou for bash: "kigou complete" knows what a word may be.

# Takes the line before the cursor apart into words without quotation marks; nothing in it is
# expanded. bash replaces the last word only from behind a quotation mark that is still open, or
# else a character such as =: kept is what stands before that in the word, mark the quotation
# mark.
_kigou_take_apart() {
  local line=${COMP_LINE:0:COMP_POINT} char state=between outside
  local -i i
  words=() word='' kept='' mark='' target=no
  for ((i = 0; i < ${#line}; i++)); do
    char=${line:i:1}
    if [[ -n $mark ]]; then
      case $mark$char in
        "''" | '""') mark='' kept=$outside ;;
        '"\') [[ ${line:i+1:1} != [\\\"\$\`] ]] || i+=1; word+=${line:i:1} ;;
        *) word+=$char ;;
      esac
      continue
    fi
    case $char in
      [[:space:]] | '<' | '>')
        # The name behind < or > is no word of the command, nor is the 2 of 2>.
        if [[ $state == word && $target == yes ]]; then
          target=no
        elif [[ $state == word && ($char == [[:space:]] || $word == *[!0-9]*) ]]; then
          words+=("$word")
        fi
        [[ $char == [[:space:]] ]] || target=yes
        word='' kept='' state=between
        continue
        ;;
      \' | '"') mark=$char outside=$kept kept=$word ;;
      \\) i+=1 word+=${line:i:1} ;;
      *)
        word+=$char
        [[ $COMP_WORDBREAKS != *"$char"* ]] || kept=$word
        ;;
    esac
    state=word
  done
}

# Writes $1 into REPLY as it has to stand on the line behind the mark.
_kigou_quote() {
  local char apostrophe="'\\''" exclamation="\"'!'\""
  local -i i
  REPLY=$1
  if [[ $mark == \' ]]; then
    REPLY=${1//\'/"$apostrophe"}
  elif [[ $1 == *[!a-zA-Z0-9_/.,%+-]* ]]; then
    REPLY=
    for ((i = 0; i < ${#1}; i++)); do
      char=${1:i:1}
      case $mark$char in
        '"!') REPLY+=$exclamation ;;
        '"'[\"\\\$\`] | [[:blank:]\"\'\\\$\`\!\#\&\(\)\*\;\<\>\?\[\]^\{\|\}~:=@]) REPLY+=\\$char ;;
        *) REPLY+=$char ;;
      esac
    done
  fi
}

_kigou() {
  local word kept mark target program line candidate REPLY
  local -a words
  COMPREPLY=()
  _kigou_take_apart
  if [[ $target == yes ]]; then
    compopt -o default
    return
  fi
  program=$(type -P -- "${words[0]-}") || program=kigou
  while IFS= read -r line; do
    candidate=${line%%$'\t'*}
    case $line in
      $'\tfile') compopt -o default ;;
      $'\tdirectory') compopt -o dirnames ;;
      "$kept"*)
        _kigou_quote "${candidate:${#kept}}"
        COMPREPLY+=("$REPLY")
        ;;
    esac
  done < <(command "$program" complete "${words[@]:1}" "$word" 2>/dev/null </dev/null)
  compopt -o nosort 2>/dev/null
  [[ ${#COMPREPLY[@]} != 1 || $candidate != *[/／] ]] || compopt -o nospace
}

complete -F _kigou kigou
