# bash completion for recalculo

_recalculo() {
    local word=${COMP_WORDS[COMP_CWORD]} words=''
    COMPREPLY=()
    case "${COMP_WORDS[1]} ${COMP_WORDS[COMP_CWORD - 1]}" in
    'run --set') return ;;
    'run --only') return ;;
    'run --exclude') return ;;
    'run --fail-on') words='broken left-out' ;;
    'run --color') words='auto always never' ;;
    'explain --set') return ;;
    'explain --service') return ;;
    'explain --color') words='auto always never' ;;
    'compare --fail-on') words='broken left-out' ;;
    'compare --color') words='auto always never' ;;
    'size --set') return ;;
    'size --most') return ;;
    'size --jobs') return ;;
    'size --color') words='auto always never' ;;
    'choose --set') return ;;
    'choose --must') return ;;
    'choose --value') return ;;
    'choose --seconds') return ;;
    'choose --runs') return ;;
    'choose --seed') return ;;
    'choose --jobs') return ;;
    'choose --keep') return ;;
    'choose --color') words='auto always never' ;;
    'bound --set') return ;;
    'bound --color') words='auto always never' ;;
    'import --format') words='channels.conf dvbv5 lamedb' ;;
    'import --radio-bitrate') return ;;
    'import --sd-bitrate') return ;;
    'import --hd-bitrate') return ;;
    'import --uhd-bitrate') return ;;
    'import --only') return ;;
    'import --exclude') return ;;
    'export --format') words='channels.conf csv' ;;
    esac
    if [[ $COMP_CWORD -eq 1 ]]; then
        words='run explain compare size choose bound import export --help --version'
    elif [[ -z $words && $word == -* ]]; then
        case ${COMP_WORDS[1]} in
        run) words='-h --help --set --only --exclude --select --json --html --live --strategies --pauses --log --fail-on --color --version' ;;
        explain) words='-h --help --set --service --json --color --version' ;;
        compare) words='-h --help --json --html --fail-on --color --version' ;;
        size) words='-h --help --set --add --most --jobs --json --color --version' ;;
        choose) words='-h --help --set --must --value --seconds --runs --seed --jobs --keep -o --output --json --html --color --version' ;;
        bound) words='-h --help --set --json --color --version' ;;
        import) words='-h --help --modules --format -o --output --radio-bitrate --sd-bitrate --hd-bitrate --uhd-bitrate --keep-duplicates --only --exclude --select --verbose --version' ;;
        export) words='-h --help --format -o --output --version' ;;
        esac
    fi
    if [[ -n $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    else
        compopt -o filenames 2>/dev/null || :
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _recalculo recalculo
