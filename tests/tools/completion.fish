#!/usr/bin/env fish
# completion.fish FILE: sources the fish completion and looks at what it offers.
set -l file (realpath $argv[1])
set -l expected (dirname (realpath (status filename)))/completion.expected
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

source $expected; or set failed 1
for line in 'recalculo ' 'recalculo size --most '
    if contains other.txt (complete -C $line)
        echo "'$line' offers files."
        set failed 1
    end
end
cd /
rm -rf $folder
exit $failed
