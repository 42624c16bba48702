# bash completion for refdoc. The client itself knows what fits, and what of the line bash replaces; this script
# only hands it the line up to the cursor.

# Counts the cursor's place in bytes, as bash did up to 4.2.
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
