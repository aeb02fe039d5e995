#compdef recalculo

_recalculo() {
    local -a commands=(
        'run:Place the services of a head-end and report where they went'
        'explain:Tell why services are left out, and what each module answers'
        'compare:Show two placements side by side'
        'size:Tell what to change so that all services are placed'
        'choose:Find which services to ask for, so that the most that matters is placed'
        'drill:Tell what goes off the air when a module or an input fails, and what a new run saves'
        'bound:Tell how many services any arrangement of a head-end could place'
        'import:Make a head-end of a channel list and modules'
        'measure:Put measured rates into a head-end'
        'export:Write the result of a run as a channel list, a table or a page'
        'help:Tell what the program or a command does, as --help'
    )
    if (( CURRENT == 2 )); then
        _describe -t commands command commands
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '--version[Display program version information and exit]'
        return
    fi
    shift words
    (( CURRENT-- ))
    case $words[1] in
    run)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:HEADEND:_files' \
            '*--set[Change a value for this run, as in modules\[2\].pids_max=64, counted from 0, or modules\[MAC\].pids_max=64; \[*\] for all of a list; may be given several times]:PATH=VALUE: ' \
            '*--only[Only services that are one of\: tv, radio, hd, sd, scrambled, free, unknown, a stream as 1/1002, LCNs as 12 or 100-199, name=PATTERN, group=PATTERN; with commas between them. Of several --only all must hold]:TERMS: ' \
            '*--exclude[No services that are one of these]:TERMS: ' \
            '*--select[Only services that stand in this file, a name or LCN a line]:FILE:_files' \
            '*--wish[Ask only for services that stand in this wish list, those first that stand first\: a receiver'\''s bouquet, a table as CSV, or a name or LCN a line; - for standard input. May be given several times]:FILE:_files' \
            '--wish-lcns[Take over the LCNs of the wish lists, or where these have none the places in them]' \
            '--verbose[Tell every message; by default three of each kind]' \
            '--json[Report as JSON]' \
            '--html[Write the result as a page for a browser; - for standard output in the place of the report]:FILE:_files' \
            '--live[Write the planner for a browser with this head-end inside, to go on there]:FILE:_files' \
            '--strategies[Show first what each of the engine'\''s four strategies alone would leave out]' \
            '--summary[Report the numbers of services alone, in one line]' \
            '--pauses[Keep the engine'\''s pauses, which take from seconds to minutes]' \
            '--log[Write the engine'\''s log to a file; - for standard error]:FILE:_files' \
            '--max-log[Stop a run whose log is longer, in millions of bytes; 0 for no limit]:MB: ' \
            '*--fail-on[End with exit code 3 if something in the placement is broken, with 4 if services or clones are without a place. The report is written all the same; may be given several times]:value:(broken left-out)' \
            '--trials[Look for the limit whose raise helps most by running the engine on about N changed head-ends at the most; 0 for none. By default 200, fewer for more than 1000 services]:N: ' \
            '--reserve[What each output is to keep free for tables, of its maximum; 2.5% by default. The report tells which cannot; the engine does not know of it]:N%: ' \
            '--max-seconds[Stop a run of the engine that takes longer, pauses apart; 0 for no limit]:N: ' \
            '--color[Colour the report; auto is on a terminal]:value:(auto always never)' \
            '--version[Display program version information and exit]'
        ;;
    explain)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:HEADEND:_files' \
            '*--set[Change a value for this run, as in modules\[2\].pids_max=64, counted from 0, or modules\[MAC\].pids_max=64; \[*\] for all of a list; may be given several times]:PATH=VALUE: ' \
            '*--service[A service by its LCN or its name; with @ONID/TSID for one stream only. May be given several times. Without it, all that are on no output]:KEY: ' \
            '--remedy[Look for the smallest change with which the engine places each service asked for, by running it]' \
            '--trials[Look for the limit whose raise helps most by running the engine on about N changed head-ends at the most; 0 for none. By default 200, fewer for more than 1000 services]:N: ' \
            '--json[Answer as JSON]' \
            '--reserve[What each output is to keep free for tables, of its maximum; 2.5% by default. The report tells which cannot; the engine does not know of it]:N%: ' \
            '--verbose[Tell every caution; by default three of each kind]' \
            '--max-seconds[Stop a run of the engine that takes longer, pauses apart; 0 for no limit]:N: ' \
            '--color[Colour the report; auto is on a terminal]:value:(auto always never)' \
            '--version[Display program version information and exit]'
        ;;
    compare)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:BEFORE:_files' \
            '*:AFTER:_files' \
            '*--set[Change a value of AFTER, a head-end, for this run, as in modules\[2\].pids_max=64, counted from 0, or modules\[MAC\].pids_max=64; \[*\] for all of a list; may be given several times]:PATH=VALUE: ' \
            '--json[Report as JSON]' \
            '--html[Write the comparison as a page for a browser; - for standard output in the place of the report]:FILE:_files' \
            '*--fail-on[End with exit code 3 if something in the second placement is broken, with 4 if services or clones are without a place. The report is written all the same; may be given several times]:value:(broken left-out)' \
            '--reserve[What each output is to keep free for tables, of its maximum; 2.5% by default. The report tells which cannot; the engine does not know of it]:N%: ' \
            '--verbose[Tell every caution; by default three of each kind]' \
            '--max-seconds[Stop a run of the engine that takes longer, pauses apart; 0 for no limit]:N: ' \
            '--color[Colour the report; auto is on a terminal]:value:(auto always never)' \
            '--version[Display program version information and exit]'
        ;;
    size)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:HEADEND:_files' \
            '*--set[Change a value for this run, as in modules\[2\].pids_max=64, counted from 0, or modules\[MAC\].pids_max=64; \[*\] for all of a list; may be given several times]:PATH=VALUE: ' \
            '*--add[The kind of module to add\: a module, or a head-end file with one; - for standard input. Of several kinds the cheapest mix is looked for]:FILE:_files' \
            '--most[The most modules to add]:N: ' \
            '--choose[With each number of modules, ask for what a search finds to ask for, as choose does, and not for everything]' \
            '--jobs[How many runs at once; as many as there are cores by default]:N: ' \
            '--json[Report as JSON]' \
            '--max-seconds[Stop a run of the engine that takes longer, pauses apart; 0 for no limit]:N: ' \
            '--color[Colour the report; auto is on a terminal]:value:(auto always never)' \
            '--version[Display program version information and exit]'
        ;;
    choose)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:HEADEND:_files' \
            '*--set[Change a value for this run, as in modules\[2\].pids_max=64, counted from 0, or modules\[MAC\].pids_max=64; \[*\] for all of a list; may be given several times]:PATH=VALUE: ' \
            '*--wish[Choose only among services that stand in this wish list, those first that stand first\: a receiver'\''s bouquet, a table as CSV, or a name or LCN a line; - for standard input. May be given several times]:FILE:_files' \
            '--wish-lcns[Take over the LCNs of the wish lists, or where these have none the places in them]' \
            '--verbose[Tell every message; by default three of each kind]' \
            '*--must[A service that must be placed, by its LCN or its name; with @ONID/TSID for one stream only. May be given several times]:KEY: ' \
            '*--value[What services are worth, from 0 (leave it out) to 1000; 1 by default. The selection is as for --only of run; of several values for one service the last counts]:SELECTION=N: ' \
            '--seconds[How long to search; 20 by default, with --runs as long as these take]:N: ' \
            '--runs[How many states to try on each core. The same number, seed and jobs give the same answer]:N: ' \
            '--seed[Where the search begins]:N: ' \
            '--jobs[How many searches at once; as many as there are cores by default]:N: ' \
            '--keep[A result of run --json\: of what is worth the same, move the fewest services that it places; - for standard input]:RESULT: ' \
            '-o[Write the head-end with the services marked that are not asked for; - for standard output in the place of the report]:FILE:_files' \
            '--output[Write the head-end with the services marked that are not asked for; - for standard output in the place of the report]:FILE:_files' \
            '--json[Report as JSON]' \
            '--html[Write the choice as a page for a browser; - for standard output in the place of the report]:FILE:_files' \
            '--reserve[What each output is to keep free for tables, of its maximum; 2.5% by default. The report tells which cannot; the engine does not know of it]:N%: ' \
            '--max-seconds[Stop a run of the engine that takes longer, pauses apart; 0 for no limit]:N: ' \
            '--color[Colour the report; auto is on a terminal]:value:(auto always never)' \
            '--version[Display program version information and exit]'
        ;;
    drill)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:HEADEND:_files' \
            '*--set[Change a value for this run, as in modules\[2\].pids_max=64, counted from 0, or modules\[MAC\].pids_max=64; \[*\] for all of a list; may be given several times]:PATH=VALUE: ' \
            '--streams[Each stream fails in turn, too]' \
            '--spare[The kind of a spare module\: a module, or a head-end file with one; - for standard input. Look for the smallest number of them with which no module or input that fails loses a service marked as must, or where none is, any that is placed now]:FILE:_files' \
            '--most[The most spare modules to try]:N: ' \
            '--jobs[How many runs at once; as many as there are cores by default]:N: ' \
            '--all[Tell every failure, and what the worst moves; by default the 20 worst]' \
            '--json[Report as JSON]' \
            '--html[Write the drill as a page for a browser; - for standard output in the place of the report]:FILE:_files' \
            '--max-seconds[Stop a run of the engine that takes longer, pauses apart; 0 for no limit]:N: ' \
            '--color[Colour the report; auto is on a terminal]:value:(auto always never)' \
            '--version[Display program version information and exit]'
        ;;
    bound)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:HEADEND:_files' \
            '*--set[Change a value for this run, as in modules\[2\].pids_max=64, counted from 0, or modules\[MAC\].pids_max=64; \[*\] for all of a list; may be given several times]:PATH=VALUE: ' \
            '--json[Report as JSON]' \
            '--max-seconds[Stop a run of the engine that takes longer, pauses apart; 0 for no limit]:N: ' \
            '--color[Colour the report; auto is on a terminal]:value:(auto always never)' \
            '--version[Display program version information and exit]'
        ;;
    import)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:CHANNELS:_files' \
            '--modules[A head-end file whose modules to take; - for standard input]:FILE:_files' \
            '--format[What the list is; by default it shows that itself]:value:(channels.conf dvbv5 lamedb)' \
            '-o[Where to write the head-end; - for standard output]:FILE:_files' \
            '--output[Where to write the head-end; - for standard output]:FILE:_files' \
            '--radio-bitrate[Bitrate to assume for a radio service, in kbit/s]:KBITS: ' \
            '--sd-bitrate[Bitrate to assume for an SD service, in kbit/s]:KBITS: ' \
            '--hd-bitrate[Bitrate to assume for an HD service, in kbit/s]:KBITS: ' \
            '--uhd-bitrate[Bitrate to assume for a UHD service, in kbit/s]:KBITS: ' \
            '--keep-duplicates[Import a service as often as the list has it; by default once]' \
            '*--measured[Measured rates, which stand in the place of estimates\: the analysis of a stream as JSON, a log of such, or a table as CSV; - for standard input. May be given several times]:FILE:_files' \
            '*--margin[Add so much to peak bitrates\: measured=N% to measured ones, estimated=N% to estimates, N% to both; may be given several times]:[KIND=]N%: ' \
            '*--only[Only services that are one of\: tv, radio, hd, sd, scrambled, free, unknown, a stream as 1/1002, LCNs as 12 or 100-199, name=PATTERN, group=PATTERN; with commas between them. Of several --only all must hold]:TERMS: ' \
            '*--exclude[No services that are one of these]:TERMS: ' \
            '*--select[Only services that stand in this file, a name or LCN a line]:FILE:_files' \
            '*--wish[Only services that stand in this wish list, those first that stand first\: a receiver'\''s bouquet, a table as CSV, or a name or LCN a line; - for standard input. May be given several times]:FILE:_files' \
            '--wish-lcns[Take over the LCNs of the wish lists, or where these have none the places in them]' \
            '--verbose[Tell every message; by default three of each kind]' \
            '--version[Display program version information and exit]'
        ;;
    measure)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:HEADEND:_files' \
            '*--set[Change a value for this run, as in modules\[2\].pids_max=64, counted from 0, or modules\[MAC\].pids_max=64; \[*\] for all of a list; may be given several times]:PATH=VALUE: ' \
            '*:FILES:_files' \
            '-o[Where to write the head-end; - for standard output]:FILE:_files' \
            '--output[Where to write the head-end; - for standard output]:FILE:_files' \
            '*--margin[Add so much to peak bitrates\: measured=N% to those measured now, estimated=N% to estimates, N% to both; may be given several times]:[KIND=]N%: ' \
            '--verbose[Tell every message; by default three of each kind]' \
            '--version[Display program version information and exit]'
        ;;
    export)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:RESULT:_files' \
            '--format[What to write]:value:(channels.conf csv html)' \
            '-o[Where to write it; - for standard output]:FILE:_files' \
            '--output[Where to write it; - for standard output]:FILE:_files' \
            '--version[Display program version information and exit]'
        ;;
    help)
        _arguments -S \
            '-h[Print this help message and exit]' \
            '--help[Print this help message and exit]' \
            '*:COMMAND:(run explain compare size choose drill bound import measure export)' \
            '--version[Display program version information and exit]'
        ;;
    esac
}

_recalculo "$@"
