# Bash completion for tamrix. Commands, options and operands come from its help output.

_tamrix_commands() {
    "$1" --help 2>/dev/null | sed -nE '/^Commands:/,/^$/s/^  ([a-z-]+( [a-z-]+)?) .*/\1/p'
}

# The options of a command, from "$@" --help.
_tamrix_options() {
    "$@" --help 2>/dev/null | sed -n 's/^  \(-[-0-9a-z]*\).*/\1/p'
}

_tamrix_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

# File names with any characters, including spaces; readline quotes the name that it inserts.
_tamrix_files() {
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
    compopt -o filenames 2>/dev/null
}

_tamrix() {
    local program=$1 current=$2 previous=$3 word commands
    local -a path=()
    COMPREPLY=()
    case $previous in
        --text) _tamrix_words utf-8; return ;;
        --code-page | --oem-code-page) _tamrix_words '437 850 866 932 936 949 950 1251 1252'; return ;;
        --registry | --journal | --undo) _tamrix_files; return ;;
        --zone | --type | --creator | --title | --filter | --separator) return ;;
    esac
    commands=$(_tamrix_commands "$program")
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        grep -qE "^${path[*]}${path:+ }$word( |\$)" <<<"$commands" && path+=("$word")
    done
    if [[ $current == -* ]]; then
        _tamrix_words "$(_tamrix_options "$program" "${path[@]}")"
    elif [[ ${#path[@]} == 0 ]]; then
        _tamrix_words "$(cut -d' ' -f1 <<<"$commands" | sort -u)"
    elif [[ ${#path[@]} == 1 ]] && grep -q "^${path[0]} " <<<"$commands"; then
        _tamrix_words "$(sed -n "s/^${path[0]} //p" <<<"$commands")"
    elif "$program" "${path[@]}" --help 2>/dev/null | sed -n 1p | grep -qE 'FILE|DIR|MODULE|INITIAL|NAME'; then
        _tamrix_files
    fi
}

complete -F _tamrix tamrix tamrix.exe
