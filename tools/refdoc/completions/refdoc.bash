# bash completion for refdoc. The client itself knows what fits; this script tells it the words.

# Puts together again what bash has split at "=" and ":", which stand in options (--root=DIR) and in
# names (a::b). Fills the caller's arrays `words` and `cword`.
_refdoc_join_words() {
    local rest=$COMP_LINE previous= index
    words=()
    for ((index = 0; index <= COMP_CWORD; ++index)); do
        local piece=${COMP_WORDS[index]}
        local trimmed=${rest#"${rest%%[![:space:]]*}"}
        if ((index > 0)) && [[ $trimmed == "$rest" && -n $rest ]] &&
            [[ $piece == [=:]* || $previous == *[=:] ]]; then
            words[${#words[@]} - 1]+=$piece
        else
            words+=("$piece")
        fi
        previous=$piece
        rest=${trimmed#"$piece"}
    done
    cword=$((${#words[@]} - 1))
}

_refdoc() {
    local words cword line
    COMPREPLY=()
    _refdoc_join_words
    local current=${words[cword]} kept= folder=
    # bash replaces only what follows the last of the characters at which it splits words.
    [[ $current == *[=:]* && $COMP_WORDBREAKS == *:* ]] && kept=${current%"${current##*[=:]}"}
    if [[ ${words[cword - 1]} == --root ]]; then
        folder=$current
    elif [[ $current == --root=* ]]; then
        folder=${current#--root=}
    elif [[ " ${words[*]:1:cword-1} " == *" check "* && $current != -* &&
        ${words[cword - 1]} != --l* ]]; then
        folder=$current
    else
        while IFS= read -r line; do
            printf -v line %q "${line%%$'\t'*}"
            COMPREPLY+=("${line#"$kept"}")
        done < <("$1" complete "$cword" -- "${words[@]}" 2>/dev/null)
        return 0
    fi
    compopt -o filenames 2>/dev/null
    while IFS= read -r line; do
        COMPREPLY+=("$line")
    done < <(compgen -d -- "$folder" 2>/dev/null)
    return 0
}

complete -F _refdoc refdoc
