# shellcheck shell=bash
# Completion of the command kriolilglu for bash: the command is asked for what there is.

# The names of an enumeration's values, as words.
_kriolilglu_names()
{
    kriolilglu name "$1" 2> /dev/null | sed 's/[^"]*"//; s/"$//; s/ /_/g'
}

# What the current word may be, one per line.
_kriolilglu_candidates()
{
    case $COMP_CWORD,${COMP_WORDS[1]} in
    1,* | 2,help) kriolilglu help | cut -d' ' -f3 ;;
    2,name)
        echo --search
        kriolilglu name
        ;;
    2,check | 2,setting | 2,verbosity | 2,memory | 2,adviser | 2,trace)
        kriolilglu help "${COMP_WORDS[1]}" | awk '/^  [^ ]/ { print $2 }' | tr '|' '\n'
        ;;
    2,route | 2,egress | 2,activity | 2,counter | 2,rpf-group) _kriolilglu_names access_cmd ;;
    2,status) _kriolilglu_names status ;;
    2,register | 2,deregister | 2,event) _kriolilglu_names adviser_event ;;
    3,name | 3,setting) _kriolilglu_names "${COMP_WORDS[2]}" ;;
    3,port) _kriolilglu_names port_row ;;
    3,memory) _kriolilglu_names mem_type ;;
    4,register) printf '%s\n' accept reject fail_rollback leave ;;
    esac
}

_kriolilglu()
{
    local line
    COMPREPLY=()
    while read -r line; do
        [[ -z $line || $line != "${COMP_WORDS[COMP_CWORD]}"* ]] || COMPREPLY+=("$(printf %q "$line")")
    done < <(_kriolilglu_candidates | sort -u)
}

complete -o default -F _kriolilglu kriolilglu
