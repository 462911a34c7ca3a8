#compdef tendro-host
# Completion of tendro-host for zsh. Options are those that its help lists.

local -a values
case $words[CURRENT-1] in
--simulate) values=(${(f)"$(tendro-host --list-scenarios 2>/dev/null | cut -f 1)"}) ;;
--open) values=(${(f)"$(tendro-host --list 2>/dev/null | cut -f 1)"}) ;;
esac
if (( $#values )); then
    compadd -a values
elif [[ $words[CURRENT] == -* ]]; then
    values=(${(f)"$(tendro-host --help 2>/dev/null | grep -oE '^  -[^<]*' | grep -oE -- '-[-a-z]+')"})
    compadd -a values
else
    _files
fi
