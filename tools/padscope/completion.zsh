#compdef padscope
# Completion of padscope for zsh. Verbs, options and values are those that it names itself.

local -a found
local verb=$words[2] before=$words[CURRENT-1]

# __padscope_options [VERB]: lines "NAME:what it does"
__padscope_options()
{
    padscope "$@" --help 2>/dev/null | sed -n '/^Options:/,$p' | awk '/^  -/ {
        text = substr($0, 29, 2) == "  " ? substr($0, 31) : ""
        sub(/:.*/, "", $1)
        count = split($1, names, ",")
        for (i = 1; i <= count; ++i)
            print names[i] ":" text
    }'
}

# Behind "--" there is a host with arguments of its own.
local host=${words[(i)--]}
if (( host < CURRENT )); then
    shift $host words
    (( CURRENT -= host ))
    _normal
    return
fi

if (( CURRENT == 2 )); then
    found=(${(f)"$(padscope --help 2>/dev/null | sed -n '/^Subcommands:/,$s/^  \([a-z]*\)  *\(.*\)/\1:\2/p')"})
    _describe -t verbs verb found
    found=(${(f)"$(__padscope_options)"})
    _describe -o -t options option found
    return
fi

case $before in
--format|--kind|--kinds|--on|--time|--type|--what)
    # Out of the line against a wrong value.
    found=($(padscope $verb $before : 2>&1 </dev/null | sed -n 's/; see --help$//; s/NAME//g; s/.*is none of //p' | tr -d ,))
    ;;
esac
if (( $#found )); then
    compadd -a found
elif [[ $words[CURRENT] == -* ]]; then
    found=(${(f)"$(__padscope_options $verb)"})
    _describe -o -t options option found
else
    _files
fi
