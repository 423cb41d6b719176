# Completion of orbconv-inspect for bash. Needs nothing of the package bash-completion.

_orbconv_inspect() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
    # bash takes the sign of --option=value for a word of its own.
    if [ "$current" = '=' ]; then
        current=
    elif [ "$option" = '=' ]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi

    COMPREPLY=()
    if [[ $option != --html && $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '--json --html -q --quiet -h --help --version' -- "$current")
    else
        compopt -o default # readline's own completion of file names: it knows about quoting
    fi
}

complete -F _orbconv_inspect orbconv-inspect
