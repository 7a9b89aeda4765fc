# shellcheck shell=bash
# Completion of the command kriolilglu for bash: the command is asked for what there is. Upper and
# lower case are the same.

# The names of an enumeration's values, as words, and the constants where a word has been begun.
_kriolilglu_names()
{
    kriolilglu name "$1" 2> /dev/null | awk -F '"' -v begun="${COMP_WORDS[COMP_CWORD]}" '
        { gsub(/ /, "_", $2); print $2 }
        begun != "" { split($1, words, " "); print words[2] }'
}

# The forms of a request, or of all, without their blanks in front.
_kriolilglu_forms()
{
    kriolilglu help "$@" | sed -n 's/^  \([a-z]\)/\1/p'
}

# What the current word may be, one per line.
_kriolilglu_candidates()
{
    case $COMP_CWORD,${COMP_WORDS[1],,} in
    1,* | 2,help) _kriolilglu_forms | cut -d' ' -f1 ;;
    2,name)
        echo --search
        kriolilglu name
        ;;
    2,check | 2,setting | 2,verbosity | 2,memory | 2,adviser | 2,trace)
        _kriolilglu_forms "${COMP_WORDS[1]}" | cut -d' ' -f2 | tr '|' '\n'
        ;;
    2,route | 2,egress | 2,activity | 2,counter | 2,rpf-group) _kriolilglu_names access_cmd ;;
    *,status) _kriolilglu_names status ;;
    2,register | 2,deregister | 2,event) _kriolilglu_names adviser_event ;;
    2,port)
        _kriolilglu_names port_type
        _kriolilglu_names port_row
        ;;
    *,name | 3,setting) _kriolilglu_names "${COMP_WORDS[2]}" ;;
    3,port) _kriolilglu_names port_row ;;
    3,memory) _kriolilglu_names mem_type ;;
    4,register) printf '%s\n' accept reject fail_rollback leave ;;
    esac
}

_kriolilglu()
{
    local line word=${COMP_WORDS[COMP_CWORD]}
    COMPREPLY=()
    while read -r line; do
        [[ -z $line || ${line,,} != "${word,,}"* ]] || COMPREPLY+=("$(printf %q "$line")")
    done < <(_kriolilglu_candidates | sort -u)
}

complete -o default -F _kriolilglu kriolilglu
