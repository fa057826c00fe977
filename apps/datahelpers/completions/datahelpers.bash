# bash completion for datahelpers: the program itself says what may stand there.
_datahelpers() {
    local cur=${COMP_WORDS[COMP_CWORD]} word
    COMPREPLY=()
    [[ $cur != = ]] || cur=
    while IFS=$'\t' read -r word _; do
        case $word in
            :files) mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$cur"); compopt -o filenames 2>/dev/null ;;
            :folders) mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -d -- "$cur"); compopt -o filenames 2>/dev/null ;;
            *) COMPREPLY+=("$word") ;;
        esac
    done < <("${COMP_WORDS[0]}" __complete "${COMP_WORDS[@]:1:COMP_CWORD}" 2>/dev/null)
}
complete -F _datahelpers datahelpers
