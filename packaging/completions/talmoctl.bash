# Bash completion for talmoctl.

_talmoctl() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} options
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    mapfile -t COMPREPLY < <(compgen -W "format clean instructions transcribe insert last trace restore-clipboard press release toggle cancel status watch menu pause resume engines check-model model setup doctor --help --version" -- "$current")
    return
  fi
  case ${COMP_WORDS[1]} in
    format | clean | insert | last) options="--raw --help" ;;
    instructions) options="--tone --concise --no-concise --bullets --word --no-words --raw --help" ;;
    transcribe) options="--live --language --engine --help" ;;
    engines | trace | restore-clipboard | press | release | toggle | cancel | menu | pause | resume) options="--help" ;;
    status | watch | doctor) options="--json --help" ;;
    check-model) options="--library --load-only --json --help" ;;
    model)
      case ${COMP_WORDS[2]} in
        list) options="--json --help" ;;
        install) options="--accept-renewed --help" ;;
        use) options="--live --help" ;;
        *) options="--help" ;;
      esac
      ;;
    setup) options="--yes --model --help" ;;
    *) return ;;
  esac
  case $previous in
    --tone)
      mapfile -t COMPREPLY < <(compgen -W "standard professional friendly polite" -- "$current")
      return
      ;;
    --word | --language | --engine | --model) return ;;
  esac
  if [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
  elif [ "${COMP_WORDS[1]}" = transcribe ] || [ "${COMP_WORDS[1]}" = check-model ]; then
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  elif [ "${COMP_WORDS[1]}" = model ] && [ "$COMP_CWORD" -eq 2 ]; then
    mapfile -t COMPREPLY < <(compgen -W "list install remove use" -- "$current")
  elif [ "${COMP_WORDS[1]}" = model ] && [ "${COMP_WORDS[2]}" != list ]; then
    local names
    names=$(talmoctl model list 2>/dev/null | grep -v '^ ' | cut -d' ' -f1)
    [ "${COMP_WORDS[2]}" != use ] || names+=" automatic embedded"
    mapfile -t COMPREPLY < <(compgen -W "$names" -- "$current")
  fi
}
complete -F _talmoctl talmoctl
