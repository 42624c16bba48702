# bash completion for refdoc. This script passes the line up to the cursor to the client, which knows the
# completions and how much of the line bash replaces.

# Cuts the line by bytes: up to 4.2, bash gives the cursor's position in bytes.
_refdoc_line_in_bytes() {
    local LC_ALL=C
    line=${COMP_LINE:0:COMP_POINT}
}

_refdoc() {
    local line=${COMP_LINE:0:COMP_POINT} completion
    COMPREPLY=()
    ((BASH_VERSINFO[0] * 100 + BASH_VERSINFO[1] > 402)) || _refdoc_line_in_bytes
    while IFS= read -r completion; do
        if [[ $completion == *$'\t'* ]]; then
            COMPREPLY+=("${completion%%$'\t'*}")
        else
            compopt -o dirnames 2>/dev/null
        fi
    done < <("$1" complete --bash -- "$line" "$COMP_WORDBREAKS" 2>/dev/null)
    return 0
}

complete -F _refdoc refdoc
