# Fish completion for talmoctl.
set -l commands format clean instructions transcribe insert last trace restore-clipboard press release toggle cancel \
    status watch menu pause resume engines check-model model setup doctor
set -l before "not __fish_seen_subcommand_from $commands"
set -l actions list install remove use
set -l before_action "__fish_seen_subcommand_from model; and not __fish_seen_subcommand_from $actions"

function __talmoctl_models
    talmoctl model list 2>/dev/null | string match -rv '^ ' | string split -f 1 ' '
end

complete -c talmoctl -f
complete -c talmoctl -s h -l help -d 'Show help'
complete -c talmoctl -n $before -s v -l version -d 'Show the version'

complete -c talmoctl -n $before -a format -d 'Format a transcript by simple rules'
complete -c talmoctl -n $before -a clean -d 'Clean up a transcript using your settings'
complete -c talmoctl -n $before -a instructions -d 'Print the instructions for the language model'
complete -c talmoctl -n $before -a transcribe -d 'Transcribe a sound file'
complete -c talmoctl -n $before -a insert -d 'Paste text into the active window'
complete -c talmoctl -n $before -a last -d 'Print the last dictation'
complete -c talmoctl -n $before -a trace -d 'Print how long each stage of the last dictation took'
complete -c talmoctl -n $before -a restore-clipboard -d 'Restore the clipboard from before a failed insertion'
complete -c talmoctl -n $before -a press -d 'Do what pressing the key does'
complete -c talmoctl -n $before -a release -d 'Do what releasing the key does'
complete -c talmoctl -n $before -a toggle -d 'Start recording hands-free, or end the recording'
complete -c talmoctl -n $before -a cancel -d 'Discard the recording'
complete -c talmoctl -n $before -a status -d 'Print what Talmo is doing'
complete -c talmoctl -n $before -a watch -d 'Print what Talmo is doing, and every change'
complete -c talmoctl -n $before -a menu -d 'Open or close the menu'
complete -c talmoctl -n $before -a pause -d 'Make the dictation key do nothing'
complete -c talmoctl -n $before -a resume -d 'Let the dictation key work again'
complete -c talmoctl -n $before -a engines -d 'List engines and models, and test each'
complete -c talmoctl -n $before -a check-model -d 'Load a model and report timing and memory'
complete -c talmoctl -n $before -a model -d 'List, install, remove and choose speech models'
complete -c talmoctl -n $before -a setup -d 'Install better recognition'
complete -c talmoctl -n $before -a doctor -d 'Check everything that dictation uses'

complete -c talmoctl -n '__fish_seen_subcommand_from format clean insert last instructions' -l raw \
    -d 'Leave newlines, or words, as they are'

complete -c talmoctl -n '__fish_seen_subcommand_from instructions' -l tone -x \
    -a 'standard professional friendly polite' -d 'Tone of the text'
complete -c talmoctl -n '__fish_seen_subcommand_from instructions' -l concise -d 'Ask for concise wording'
complete -c talmoctl -n '__fish_seen_subcommand_from instructions' -l no-concise -d 'Do not ask for concise wording'
complete -c talmoctl -n '__fish_seen_subcommand_from instructions' -l bullets -d 'Ask for a bullet list'
complete -c talmoctl -n '__fish_seen_subcommand_from instructions' -l word -x -d 'A word to preserve'
complete -c talmoctl -n '__fish_seen_subcommand_from instructions' -l no-words -d 'Preserve no words'

complete -c talmoctl -n '__fish_seen_subcommand_from transcribe' -F
complete -c talmoctl -n '__fish_seen_subcommand_from transcribe' -l live \
    -d 'Print the transcript so far whenever it changes'
complete -c talmoctl -n '__fish_seen_subcommand_from transcribe' -l language -x -d 'The spoken language'
complete -c talmoctl -n '__fish_seen_subcommand_from transcribe' -l engine -x \
    -a 'embedded (__talmoctl_models)' -d 'The recogniser to use'

complete -c talmoctl -n '__fish_seen_subcommand_from check-model' -a '(__fish_complete_directories)'
complete -c talmoctl -n '__fish_seen_subcommand_from check-model' -l library -r -F -d 'Engine library to load'
complete -c talmoctl -n '__fish_seen_subcommand_from check-model' -l load-only -d 'Only load the model'
complete -c talmoctl -n '__fish_seen_subcommand_from check-model' -l json -d 'Print the report as JSON'

complete -c talmoctl -n $before_action -a list -d 'List models'
complete -c talmoctl -n $before_action -a install -d 'Download and install a model'
complete -c talmoctl -n $before_action -a remove -d 'Remove a model'
complete -c talmoctl -n $before_action -a use -d 'Choose the recogniser'
complete -c talmoctl -n '__fish_seen_subcommand_from status watch doctor' -l json -d 'Print JSON'
complete -c talmoctl -n '__fish_seen_subcommand_from list' -l json -d 'Print the list as JSON'
complete -c talmoctl -n '__fish_seen_subcommand_from install' -l accept-renewed \
    -d 'Accept another file than the known one'
complete -c talmoctl -n '__fish_seen_subcommand_from install remove use' -a '(__talmoctl_models)'
complete -c talmoctl -n '__fish_seen_subcommand_from use' -a 'automatic embedded'
complete -c talmoctl -n '__fish_seen_subcommand_from use' -l live -x -a 'none (__talmoctl_models)' \
    -d 'Show the text of this model while an offline one has none'

complete -c talmoctl -n '__fish_seen_subcommand_from setup' -l yes -d 'Do not ask'
complete -c talmoctl -n '__fish_seen_subcommand_from setup' -l model -x -a '(__talmoctl_models)' \
    -d 'Install this model'
