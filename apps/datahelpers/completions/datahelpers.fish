# fish completion for datahelpers: the program itself says what may stand there.
function __datahelpers_complete
    set -l line (commandline -opc)
    set -l current (commandline -ct)
    for offered in ($line[1] __complete $line[2..] $current 2>/dev/null)
        switch $offered
            case :files
                __fish_complete_path $current
            case :folders
                __fish_complete_directories $current
            case '*'
                echo $offered
        end
    end
end
complete -c datahelpers -f -a '(__datahelpers_complete)'
