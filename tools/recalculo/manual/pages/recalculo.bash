# bash completion for recalculo

_recalculo() {
    local word=${COMP_WORDS[COMP_CWORD]} words=''
    COMPREPLY=()
    case "${COMP_WORDS[1]} ${COMP_WORDS[COMP_CWORD - 1]}" in
    'run --set') return ;;
    'run --only') return ;;
    'run --exclude') return ;;
    'run --max-log') return ;;
    'run --fail-on') words='broken left-out' ;;
    'run --trials') return ;;
    'run --reserve') return ;;
    'run --max-seconds') return ;;
    'run --color') words='auto always never' ;;
    'explain --set') return ;;
    'explain --service') return ;;
    'explain --trials') return ;;
    'explain --reserve') return ;;
    'explain --max-seconds') return ;;
    'explain --color') words='auto always never' ;;
    'compare --set') return ;;
    'compare --fail-on') words='broken left-out' ;;
    'compare --reserve') return ;;
    'compare --max-seconds') return ;;
    'compare --color') words='auto always never' ;;
    'size --set') return ;;
    'size --most') return ;;
    'size --jobs') return ;;
    'size --max-seconds') return ;;
    'size --color') words='auto always never' ;;
    'choose --set') return ;;
    'choose --must') return ;;
    'choose --value') return ;;
    'choose --seconds') return ;;
    'choose --runs') return ;;
    'choose --seed') return ;;
    'choose --jobs') return ;;
    'choose --keep') return ;;
    'choose --reserve') return ;;
    'choose --max-seconds') return ;;
    'choose --color') words='auto always never' ;;
    'drill --set') return ;;
    'drill --most') return ;;
    'drill --jobs') return ;;
    'drill --max-seconds') return ;;
    'drill --color') words='auto always never' ;;
    'bound --set') return ;;
    'bound --max-seconds') return ;;
    'bound --color') words='auto always never' ;;
    'import --format') words='channels.conf dvbv5 lamedb' ;;
    'import --radio-bitrate') return ;;
    'import --sd-bitrate') return ;;
    'import --hd-bitrate') return ;;
    'import --uhd-bitrate') return ;;
    'import --margin') return ;;
    'import --only') return ;;
    'import --exclude') return ;;
    'measure --set') return ;;
    'measure --margin') return ;;
    'export --format') words='channels.conf csv html' ;;
    'help help') words='run explain compare size choose drill bound import measure export' ;;
    esac
    if [[ $COMP_CWORD -eq 1 ]]; then
        words='run explain compare size choose drill bound import measure export help --help --version'
    elif [[ -z $words && $word == -* ]]; then
        case ${COMP_WORDS[1]} in
        run) words='-h --help --set --only --exclude --select --wish --wish-lcns --verbose --json --html --live --strategies --summary --pauses --log --max-log --fail-on --trials --reserve --max-seconds --color --version' ;;
        explain) words='-h --help --set --service --remedy --trials --json --reserve --verbose --max-seconds --color --version' ;;
        compare) words='-h --help --set --json --html --fail-on --reserve --verbose --max-seconds --color --version' ;;
        size) words='-h --help --set --add --most --choose --jobs --json --max-seconds --color --version' ;;
        choose) words='-h --help --set --wish --wish-lcns --verbose --must --value --seconds --runs --seed --jobs --keep -o --output --json --html --reserve --max-seconds --color --version' ;;
        drill) words='-h --help --set --streams --spare --most --jobs --all --json --html --max-seconds --color --version' ;;
        bound) words='-h --help --set --json --max-seconds --color --version' ;;
        import) words='-h --help --modules --format -o --output --radio-bitrate --sd-bitrate --hd-bitrate --uhd-bitrate --keep-duplicates --measured --margin --only --exclude --select --wish --wish-lcns --verbose --version' ;;
        measure) words='-h --help --set -o --output --margin --verbose --version' ;;
        export) words='-h --help --format -o --output --version' ;;
        help) words='-h --help --version' ;;
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
