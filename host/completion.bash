# Completion of tendro-host for bash. Options are those that its help lists.

_tendro_host_values()
{
    case $1 in
    --simulate) tendro-host --list-scenarios 2>/dev/null | cut -f 1 ;;
    --open) tendro-host --list 2>/dev/null | cut -f 1 ;;
    esac
}

_tendro_host()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} options
    if [[ $word == -* ]]; then
        options=$(tendro-host --help 2>/dev/null | grep -oE '^  -[^<]*' | grep -oE -- '-[-a-z]+')
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -W "$(_tendro_host_values "$before")" -- "$word")
    fi
}
complete -o default -F _tendro_host tendro-host
