# bash completion for recalculo

_recalculo() {
    local word=${COMP_WORDS[COMP_CWORD]} words=''
    COMPREPLY=()
    case $COMP_CWORD in
    1) words='run explain compare size bound import export --help --version' ;;
    *) case ${COMP_WORDS[1]} in
    run) words='-h --help --set --json --html --strategies --pauses --log --color --version' ;;
    explain) words='-h --help --set --service --json --color --version' ;;
    compare) words='-h --help --json --html --color --version' ;;
    size) words='-h --help --set --add --most --jobs --json --color --version' ;;
    bound) words='-h --help --set --json --color --version' ;;
    import) words='-h --help --modules --format -o --output --radio-bitrate --sd-bitrate --hd-bitrate --version' ;;
    export) words='-h --help --format -o --output --version' ;;
    esac ;;
    esac
    if [[ $word == -* || $COMP_CWORD -eq 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        compopt -o filenames 2>/dev/null || :
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _recalculo recalculo
