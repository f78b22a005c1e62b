# Completion of moxcc in bash: words, exports and options come from the program itself.
_moxcc() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]} words=
    COMPREPLY=()
    if [ "$COMP_CWORD" = 1 ]; then
        words="$(moxcc --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\).*/\1/p') --help --version"
    elif [[ $current == -* ]]; then
        words=$(moxcc "$command" --help 2>/dev/null | grep -o -- '^  *\(-.,\)\?--[a-z0-9-]*' | grep -o -- '--.*')
    elif [ "$COMP_CWORD" = 2 ] && [[ $command == run || $command == show ]]; then
        words=$(moxcc list --names)
    elif [[ $previous == --* ]]; then # of the names that the help lists
        words=$(moxcc "$command" --help 2>/dev/null | sed -n "s/^ *$previous NAME .*: \(.*\)/\1/p" | sed 's/=[0-9]*//g')
    fi
    if [ -n "$words" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    else
        compopt -o default 2>/dev/null
    fi
}
complete -F _moxcc moxcc
