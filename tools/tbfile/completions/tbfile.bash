# Completion of tbfile's commands, options and files.
_tbfile() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command='' options='--lang --help' word i
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        case $word in
            info | ls | dump | extract | pack | verify | recover | diff | repack)
                command=$word
                break ;;
        esac
    done
    COMPREPLY=()
    case $previous in
        --lang) mapfile -t COMPREPLY < <(compgen -W 'fr en' -- "$current"); return ;;
        -s | --sort)
            mapfile -t COMPREPLY < <(compgen -W 'file id length description' -- "$current")
            return ;;
    esac
    case $command in
        '') mapfile -t COMPREPLY < <(compgen -W "info ls dump extract pack verify recover diff \
                repack --lang --help --version" -- "$current")
            return ;;
        info) options+=' --json' ;;
        ls) options+=' --json --sort --reverse' ;;
        dump) options+=' --raw --force' ;;
        verify) options+=' --json --quick' ;;
        recover) options+=' --json --force --certain' ;;
        diff) options+=' --json --ignore-dates' ;;
        repack) options+=' --json --force --checksums' ;;
        *) options+=' --json --force' ;;
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _tbfile tbfile
