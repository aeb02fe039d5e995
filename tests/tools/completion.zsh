#!/usr/bin/env zsh
# completion.zsh FILE: lets a zsh on a terminal of its own complete command lines with the completion in FILE, and looks
# at what it offers.
zmodload zsh/zpty || exit 77
file=${1:A}
expected=${0:A:h}/completion.expected
folder=$(mktemp -d)
trap 'rm -rf $folder' EXIT
cp $file $folder/_recalculo
cd $folder
touch 'other.txt'

# What is set up in the other zsh: each match is printed on a line of its own between two marks. (It waits to be ended:
# of one that has ended the last words are lost.)
cat >setup <<'END'
PROMPT=
fpath=($PWD $fpath)
autoload compinit
compinit -u -d $PWD/dump
bindkey '^M' undefined
bindkey '^J' undefined
bindkey '^I' complete-word
zstyle ':completion:*' insert-tab false
mark() { print -r - '<mark>' }
compprefuncs=(mark)
comppostfuncs=(mark)
compadd() {
    if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then
        builtin compadd "$@"
        return
    fi
    typeset -a hits
    builtin compadd -A hits "$@"
    print -rl -- $hits
}
print ready
END

# offered LINE: the matches.
offered() {
    local line
    zpty other zsh -f -i
    zpty -w other source $folder/setup
    while zpty -r other line; do [[ $line == ready* ]] && break; done
    zpty -n -w other "$1"$'\t'
    zpty -r other line '*<mark>*<mark>*'
    zpty -d other
    print -r -- ${${${line#*<mark>}%<mark>*}//$'\r'/}
}

# expect LINE WHAT...: completing it offers these, among others.
expect() {
    local matches=$(offered $1) what
    for what in ${@[2,-1]}; do
        print -r -- $matches | grep -xF -- $what >/dev/null || {
            print "'$1': expected '$what' among: ${matches//$'\n'/ }"
            exit 1
        }
    done
}

source $expected || exit 1

matches=$(offered 'recalculo size --most ')
[[ -z ${matches//[[:space:]]/} ]] || { print "a number is not completed, and yet: $matches"; exit 1; }
