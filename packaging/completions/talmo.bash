# Bash completion for talmo.
complete -W "--help --version" talmo
