# Completion of tamrix for bash. Commands and options are those that its help lists.

_tamrix_commands() {
    "$1" --help 2>/dev/null | sed -n '/^Commands:/,/^$/s/^  \([a-z-]*\) *\([a-z-]*\).*/\1 \2/p'
}

_tamrix_options() {
    "$@" --help 2>/dev/null | sed -n 's/^  \(-[-0-9a-z]*\).*/\1/p'
}

_tamrix() {
    local program=$1 current=$2 previous=$3 word commands
    local -a path=()
    COMPREPLY=()
    case $previous in
        --text) COMPREPLY=($(compgen -W utf-8 -- "$current")); return ;;
        --code-page | --oem-code-page) COMPREPLY=($(compgen -W '437 850 932 936 949 950 1251 1252' -- "$current")); return ;;
        --registry) COMPREPLY=($(compgen -f -- "$current")); return ;;
        --zone | --type | --creator | --title | --filter | --separator) return ;;
    esac
    commands=$(_tamrix_commands "$program")
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        grep -q "^${path[*]}${path:+ }$word\b" <<<"$commands" && path+=("$word")
    done
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$(_tamrix_options "$program" "${path[@]}")" -- "$current"))
    elif [[ ${#path[@]} == 0 ]]; then
        COMPREPLY=($(compgen -W "$(cut -d' ' -f1 <<<"$commands" | sort -u)" -- "$current"))
    elif [[ ${#path[@]} == 1 ]] && grep -q "^${path[0]} [a-z]" <<<"$commands"; then
        COMPREPLY=($(compgen -W "$(sed -n "s/^${path[0]} //p" <<<"$commands")" -- "$current"))
    else
        COMPREPLY=($(compgen -f -- "$current"))
    fi
}

complete -o filenames -F _tamrix tamrix tamrix.exe
