# Fish completion for talmo.
complete -c talmo -f
complete -c talmo -s h -l help -d 'Show help'
complete -c talmo -s v -l version -d 'Show the version'
