# Completion of kigou for fish: "kigou complete" knows what a word may be.

function __kigou_candidates
    set -l words (commandline -opc)
    set -l program (command -v -- $words[1]; or echo kigou)
    command $program complete $words[2..] $argv[1] 2>/dev/null </dev/null
end

function __kigou_complete
    set -l token (commandline -ct)
    # An open quotation mark cannot be taken off before it is closed.
    set -l word (string unescape -- $token; or string unescape -- $token\'; or string unescape -- $token\")
    set -l candidates (__kigou_candidates "$word")
    switch "$candidates[1]"
        case \t'*'
            set -l front (string match -r -- '^--[^=]*=' $word; or echo)
            set -l rest (string replace -r -- '^--[^=]*=' '' $word)
            if test $candidates[1] = \tfile
                printf '%s\n' $front(__fish_complete_path $rest)
            else
                printf '%s\n' $front(__fish_complete_directories $rest '')
            end
            return
        case '*／'\t'*'
            # fish puts a blank behind a single candidate that ends so: show what follows as well.
            test (count $candidates) -gt 1
            or set -a candidates (__kigou_candidates (string split -f 1 \t -- $candidates[1]))
    end
    printf '%s\n' $candidates
end

complete -c kigou -f -a '(__kigou_complete)'
