# fish completion for vorn
set -l rows locate date site stats corr chron check
set -l verbs $rows diff convert save replay

# True behind one of these verbs.
function __vorn_verb
    set -l typed (commandline -opc)
    test (count $typed) -gt 1; and contains -- $typed[2] $argv
end

function __vorn_no_verb
    test (count (commandline -opc)) -eq 1
end

complete -c vorn -n __vorn_no_verb -f
complete -c vorn -n __vorn_no_verb -l help -d 'lists the verbs'
complete -c vorn -n __vorn_no_verb -l version -d 'says which version this is'
complete -c vorn -n __vorn_no_verb -a locate -d 'the year in which a ring is missing or false'
complete -c vorn -n __vorn_no_verb -a date -d 'where each core is best dated, and how sure'
complete -c vorn -n __vorn_no_verb -a site -d 'which core needs work first, and what to do'
complete -c vorn -n __vorn_no_verb -a stats -d 'years, widths and agreement of each core'
complete -c vorn -n __vorn_no_verb -a corr -d 'the correlations of each core, segment by segment'
complete -c vorn -n __vorn_no_verb -a chron -d 'the chronology of each file'
complete -c vorn -n __vorn_no_verb -a check -d 'what was read and how, and what was not'
complete -c vorn -n __vorn_no_verb -a diff -d 'what became of the cores of a file, ring by ring'
complete -c vorn -n __vorn_no_verb -a convert -d 'the ring widths of a file in another layout'
complete -c vorn -n __vorn_no_verb -a save -d 'corrected cores, put back into the file that they come from'
complete -c vorn -n __vorn_no_verb -a replay -d 'runs the whole program by a script, without a window'

complete -c vorn -n "__vorn_verb $verbs" -l help -d 'lists the options'
complete -c vorn -n "__vorn_verb $verbs" -l careful -f -d 'mends what is unsafe in the usual way, or some of it'
complete -c vorn -n "__vorn_verb $rows diff convert save" -s o -r -F -d 'writes to this file'
complete -c vorn -n "__vorn_verb $rows diff convert save" -s q -d 'says nothing of what was not read'
complete -c vorn -n "__vorn_verb $rows diff" -l format -x -a 'table csv json xlsx' -d 'how the rows are written'
complete -c vorn -n "__vorn_verb $rows diff" -l json -d 'the same as --format json'
complete -c vorn -n "__vorn_verb $rows diff convert" -l fail-on -x -a 'warning error' -d 'ends with 1 where something so grave is found'
complete -c vorn -n "__vorn_verb $rows" -l spline -x -d 'years of the spline'
complete -c vorn -n "__vorn_verb $rows" -l no-spline -d 'no detrending'
complete -c vorn -n "__vorn_verb $rows" -l ar -x -d 'highest order of the AR model'
complete -c vorn -n "__vorn_verb $rows" -l no-ar -d 'no prewhitening'
complete -c vorn -n "__vorn_verb $rows" -l no-log -d 'no logarithms'
complete -c vorn -n "__vorn_verb $rows" -s j -x -d 'works on so many files at a time'
complete -c vorn -n '__vorn_verb locate date site stats corr check' -l series -x -d 'only these series'
complete -c vorn -n '__vorn_verb locate' -l gain -x -d 'least gain of an error'
complete -c vorn -n '__vorn_verb locate' -l no-narrow -d 'missing rings as likely in wide years'
complete -c vorn -n '__vorn_verb date corr' -l reference -r -F -d 'a chronology to compare with'
complete -c vorn -n '__vorn_verb date' -l references -x -a '(__fish_complete_directories)' -d 'every file in and below a folder'
complete -c vorn -n '__vorn_verb date' -l best -x -d 'with --references, so many of each core'
complete -c vorn -n '__vorn_verb date' -l no-cache -d 'with --references, keeps nothing'
complete -c vorn -n '__vorn_verb stats' -l recipe -f -d 'figures beside those of other programs'
complete -c vorn -n '__vorn_verb stats' -l move -x -d 'what it does to two files that cores move'
complete -c vorn -n '__vorn_verb site corr' -l segment -x -d 'years of a segment'
complete -c vorn -n '__vorn_verb site corr' -l step -x -d 'years from one segment to the next'
complete -c vorn -n '__vorn_verb site corr' -l overlap -x -d 'years by which segments overlap'
complete -c vorn -n '__vorn_verb corr' -l grid -x -a 'report lags' -d 'which figures'
complete -c vorn -n '__vorn_verb corr' -l max-lag -x -d 'lags to either side'
complete -c vorn -n '__vorn_verb chron' -l noaa -d 'as NOAA template text'
complete -c vorn -n '__vorn_verb check' -l list -r -F -d 'a list of files'
complete -c vorn -n '__vorn_verb check' -l year -x -d 'rings behind this year are told'
complete -c vorn -n '__vorn_verb check' -l repair -d 'writes copies that are read whole'
complete -c vorn -n '__vorn_verb check' -l unit -x -a 'hundredths thousandths millimetres' -d 'of widths whose unit is not known'
complete -c vorn -n '__vorn_verb check' -l variable -x -a 'earlywood latewood' -d 'of files that have both, instead of whole rings'
complete -c vorn -n '__vorn_verb diff' -l words -d 'a sentence for each change'
complete -c vorn -n '__vorn_verb convert' -l to -x -a 'tucson heidelberg compact csv noaa xlsx' -d 'the layout to write'
complete -c vorn -n '__vorn_verb save' -l in-place -d 'over ORIGINAL itself'
