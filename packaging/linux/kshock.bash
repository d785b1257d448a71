# Completion of kshock for bash. Commands, options and their choices are those that the program's own help lists.

_kshock() {
  local program=$1 word=$2 previous=$3 section="" line name choices options="" names="" is_value=""
  local -a command=()
  [ "$COMP_CWORD" = 1 ] || command=("${COMP_WORDS[1]}")
  while IFS= read -r line; do
    name=${line:2}
    name=${name%% *}
    choices=""
    if [[ $line =~ \{([^}]*)\} ]]; then choices=${BASH_REMATCH[1]//,/ }; fi
    case $section:$line in
      *:[A-Z]*:) section=${line%:} ;;
      Subcommands:"  "[a-z]*) names+=" $name" ;;
      Positionals:"  "[A-Z]*) names+=" $choices" ;;
      Options:"  -"*)
        options+=" ${name//,/ }"
        # One blank behind the name: a value follows. More: the description.
        if [[ ,$name, == *,"$previous",* && $line =~ ^\ \ [^\ ]+\ [^\ ] ]]; then
          names=$choices
          is_value=yes
          break
        fi
        ;;
    esac
  done < <("$program" "${command[@]}" --help 2>/dev/null)

  if [[ $word == -* && -z $is_value ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    return
  fi
  mapfile -t COMPREPLY < <(compgen -W "$names" -- "$word")
  # Files, unless a command or a choice has to stand here.
  if [ "$COMP_CWORD" -gt 1 ] && [[ -z $is_value || -z $names ]]; then
    mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$word")
  fi
}
complete -o filenames -F _kshock kshock
