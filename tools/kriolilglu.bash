# shellcheck shell=bash disable=SC2207 # lists of words
# Completion of the command kriolilglu for bash: the command is asked for what there is.

_kriolilglu()
{
    local word=${COMP_WORDS[COMP_CWORD]} words

    case $COMP_CWORD,${COMP_WORDS[1]} in
    1,*)
        words=$(kriolilglu help | cut -d' ' -f3 | sort -u)
        COMPREPLY=($(compgen -W "$words" -- "$word") $(compgen -f -- "$word"))
        return
        ;;
    2,name) words="--search $(kriolilglu name)" ;;
    2,check | 2,setting | 2,memory | 2,help | 2,adviser | 2,trace | 2,verbosity)
        words=$(kriolilglu help | sed -n "s/^  ${COMP_WORDS[1]} \\([^ ]*\\).*/\\1/p" | tr '|' ' ')
        ;;
    2,route | 2,egress | 2,activity | 2,counter | 2,rpf-group) words=$(_kriolilglu_names access_cmd) ;;
    2,status) words=$(_kriolilglu_names status) ;;
    2,register | 2,deregister | 2,event) words=$(_kriolilglu_names adviser_event) ;;
    3,name) words=$(_kriolilglu_names "${COMP_WORDS[2]}") ;;
    3,port) words=$(_kriolilglu_names port_function) ;;
    3,memory) words=$(_kriolilglu_names memory_type) ;;
    4,register) words="accept reject fail_rollback leave" ;;
    *) return ;;
    esac
    COMPREPLY=($(compgen -W "$words" -- "$word"))
}

# The names of an enumeration's values, as words.
_kriolilglu_names()
{
    kriolilglu name "$1" 2> /dev/null | sed 's/[^"]*"//; s/"$//; s/ /_/g'
}

complete -F _kriolilglu kriolilglu
