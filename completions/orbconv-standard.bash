# Completion of orbconv-standard for bash. Needs nothing of the package bash-completion.

_orbconv_standard() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]} words=
    # bash takes the sign of --option=value for a word of its own.
    if [ "$current" = '=' ]; then
        current=
    elif [ "$option" = '=' ]; then
        option=${COMP_WORDS[COMP_CWORD - 2]}
    fi

    COMPREPLY=()
    case $option in
        --rinex) words='3.05 4.01' ;;
        --split) words='1h 1d' ;;
        --stdout) words='obs nav' ;;
        --long-names) words='yes no' ;;
        --output-dir)
            compopt -o dirnames # readline's own completion: it knows about quoting
            return
            ;;
        --station | --systems | --start | --end | --interval | --date | --marker-* | --observer | --agency | \
            --receiver-* | --antenna-* | --position | --comment)
            return # a value that only the user knows
            ;;
        *)
            if [[ $current != -* ]]; then
                compopt -o default
                return
            fi
            words='--rinex --output-dir --station --force -q --quiet --split --gzip --stdout --long-names
                --systems --start --end --interval --date --marker-name --marker-number --marker-type --observer
                --agency --receiver-number --receiver-type --receiver-version --antenna-number --antenna-type
                --antenna-delta --position --comment -h --help -v --version'
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _orbconv_standard orbconv-standard
