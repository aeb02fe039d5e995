#!/usr/bin/env fish
# completion.fish FILE: sources the fish completion and looks at what it offers.
set -l file (realpath $argv[1])
set -g folder (mktemp -d)
cd $folder
touch other.txt
source $file
set -g failed 0

# expect LINE WHAT...: completing it offers these, among others.
function expect
    set -l matches (complete -C $argv[1] | string replace -r '\t.*' '')
    for what in $argv[2..-1]
        if not contains -- $what $matches
            echo "'$argv[1]': expected '$what' among: $matches"
            set -g failed 1
        end
    end
end

expect 'recalculo ' run explain compare size bound import export
expect 'recalculo --' --help --version
expect 'recalculo im' import
expect 'recalculo run --' --json --log --pauses --help
expect 'recalculo import --sd' --sd-bitrate
expect 'recalculo run --color ' auto always never
expect 'recalculo export x --format ' channels.conf csv
expect 'recalculo import x --format ' channels.conf dvbv5 lamedb
expect 'recalculo run ' other.txt
expect 'recalculo run x --log oth' other.txt
for line in 'recalculo ' 'recalculo size --most '
    if contains other.txt (complete -C $line)
        echo "'$line' offers files."
        set failed 1
    end
end
cd /
rm -rf $folder
exit $failed
