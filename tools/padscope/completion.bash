# Completion of padscope for bash. Verbs, options and values are those that it names itself.

# _padscope_options [VERB]
_padscope_options()
{
    padscope "$@" --help 2>/dev/null | sed -n '/^Options:/,$s/^  \(-[^ :]*\).*/\1/p' | tr , '\n'
}

_padscope_verbs()
{
    padscope --help 2>/dev/null | sed -n '/^Subcommands:/,$s/^  \([a-z]*\) .*/\1/p'
}

# _padscope_values VERB OPTION: of an option that takes one of a few, out of the line against a wrong one
_padscope_values()
{
    case $2 in
    --format | --kind | --kinds | --on | --time | --type | --what)
        padscope "$1" "$2" : 2>&1 </dev/null | sed -n 's/; see --help$//; s/NAME//g; s/.*is none of //p' | tr -d ,
        ;;
    esac
}

_padscope()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} verb=${COMP_WORDS[1]} i words
    COMPREPLY=()
    # Behind "--" there is a host with arguments of its own.
    for ((i = 2; i < COMP_CWORD; ++i)); do
        if [[ ${COMP_WORDS[i]} == -- ]]; then
            ((i + 1 == COMP_CWORD)) && mapfile -t COMPREPLY < <(compgen -c -- "$word")
            return
        fi
    done
    if ((COMP_CWORD == 1)); then
        words="$(_padscope_verbs) $(_padscope_options)"
    else
        words=$(_padscope_values "$verb" "$before")
        [[ -z $words && $word == -* ]] && words=$(_padscope_options "$verb")
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o default -F _padscope padscope
