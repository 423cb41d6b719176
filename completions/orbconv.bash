# Completion of orbconv for bash. Needs nothing of the package bash-completion.

_orbconv() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
    # bash takes the sign of --option=value for a word of its own.
    if [ "$current" = '=' ]; then
        current=
    elif [ "$option" = '=' ]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi

    COMPREPLY=()
    case $option in
        -f | --filename)
            compopt -o default # readline's own completion of file names: it knows about quoting
            ;;
        -rv | --rinexver)
            mapfile -t COMPREPLY < <(compgen -W '3.05 4.00 4.01' -- "$current")
            ;;
        -DH | -DE | -DN | -AN) ;; # a value that only the user knows
        *)
            mapfile -t COMPREPLY < <(compgen -W '-f --filename -rv --rinexver -G -R -W -E -C -J -I -GC
                -DH -DE -DN -AN -h --help -v --version' -- "$current")
            ;;
    esac
}

complete -F _orbconv orbconv
