# The suites with the label "logic": no display, no sound, virtual time. Sourced by the scripts that build only these.
logic_suites=(BaseTests SettingsTests InputTests SpeechTests CleanupTests InsertionTests AppTests ViewTests)
