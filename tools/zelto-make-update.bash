# Completion of zelto-make-update in bash.
_zelto_make_update() {
  COMPREPLY=()
  case $3 in --product | --version | --description) return ;; esac
  if [[ $2 == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "--product --version --description --check --help" -- "$2")
  else
    compopt -o default  # names of files
  fi
}
complete -F _zelto_make_update zelto-make-update
