<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Talmo</name>
    <message>
        <source>Grant microphone and speech-recognition permissions first.</source>
        <translation>Zuerst die Berechtigungen für Mikrofon und Spracherkennung erteilen.</translation>
    </message>
    <message>
        <source>No speech detected.</source>
        <translation>Keine Sprache erkannt.</translation>
    </message>
    <message>
        <source>An unknown error occurred.</source>
        <translation>Ein unbekannter Fehler ist aufgetreten.</translation>
    </message>
    <message>
        <source>This Mac doesn&apos;t support Apple Intelligence.</source>
        <translation>Das Sprachmodell ist in Talmos Einstellungsdatei ausgeschaltet.</translation>
    </message>
    <message>
        <source>Apple Intelligence isn&apos;t turned on. Enable it in System Settings &gt; Apple Intelligence &amp; Siri to use AI cleanup.</source>
        <translation>Auf diesem Rechner läuft kein Sprachmodell. Starten Sie eines, zum Beispiel den Server von llama.cpp oder Ollama, um die KI-Überarbeitung zu nutzen.</translation>
    </message>
    <message>
        <source>The on-device language model is still preparing. Try again shortly.</source>
        <translation>Das lokale Sprachmodell wird noch vorbereitet. Bitte gleich erneut versuchen.</translation>
    </message>
    <message>
        <source>The on-device language model isn&apos;t available right now.</source>
        <translation>Das lokale Sprachmodell ist derzeit nicht verfügbar.</translation>
    </message>
    <message>
        <source>Couldn&apos;t set up microphone capture: </source>
        <translation>Die Mikrofonaufnahme konnte nicht eingerichtet werden: </translation>
    </message>
    <message>
        <source>Couldn&apos;t start audio capture: </source>
        <translation>Die Tonaufnahme konnte nicht gestartet werden: </translation>
    </message>
    <message>
        <source>No microphone input is available.</source>
        <translation>Es ist kein Mikrofoneingang verfügbar.</translation>
    </message>
    <message>
        <source>Talmo needs Accessibility access (System Settings &gt; Privacy &amp; Security &gt; Accessibility) to insert text into other apps.</source>
        <translation>Talmo benötigt einen X-Server mit den Erweiterungen XTEST und XInput 2.2, um Text in andere Anwendungen einzufügen.</translation>
    </message>
    <message>
        <source>Nothing to insert.</source>
        <translation>Nichts einzufügen.</translation>
    </message>
    <message>
        <source>On-device speech recognition isn&apos;t available on this Mac.</source>
        <translation>Die lokale Spracherkennung ist auf diesem Rechner nicht verfügbar.</translation>
    </message>
    <message>
        <source>The current language isn&apos;t supported for on-device transcription.</source>
        <translation>Die aktuelle Sprache wird von der lokalen Spracherkennung nicht unterstützt.</translation>
    </message>
    <message>
        <source>The on-device speech model for this language isn&apos;t installed yet. Installing it once requires an internet connection; after that, transcription works fully offline.</source>
        <translation>Das lokale Erkennungsmodell für diese Sprache ist noch nicht installiert. Nur die Installation benötigt eine Internetverbindung; danach funktioniert die Erkennung vollständig offline.</translation>
    </message>
    <message>
        <source>Couldn&apos;t find a compatible audio format for the microphone and speech recognizer.</source>
        <translation>Für Mikrofon und Spracherkennung wurde kein gemeinsames Audioformat gefunden.</translation>
    </message>
    <message>
        <source>Not currently recording.</source>
        <translation>Derzeit läuft keine Aufnahme.</translation>
    </message>
    <message>
        <source>Words and phrases you add here are passed to the cleanup step as context so they&apos;re preserved exactly, instead of being &quot;corrected&quot; away.</source>
        <translation>Die hier hinzugefügten Wörter und Wendungen werden der Überarbeitung als Kontext mitgegeben, damit sie genau erhalten bleiben und nicht „wegkorrigiert“ werden.</translation>
    </message>
    <message>
        <source>Add a word or phrase</source>
        <translation>Wort oder Wendung hinzufügen</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Dictionary</source>
        <translation>Wörterbuch</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Hold fn to record and release to insert, or double-tap fn for hands-free recording (press fn again to stop). Works even when Talmo isn&apos;t the frontmost app. Requires &quot;Press 🌐 key to: Do Nothing&quot; in System Settings &gt; Keyboard, so macOS&apos;s own Globe-key action doesn&apos;t also fire. Not yet configurable in this MVP.</source>
        <translation>%1 zum Aufnehmen gedrückt halten und zum Einfügen loslassen, oder %1 zweimal kurz drücken, um freihändig aufzunehmen (zum Beenden erneut %1 drücken). Funktioniert auch, wenn Talmo nicht im Vordergrund ist. Andere Tasten lassen sich weiter unten wählen.</translation>
    </message>
    <message>
        <source>Uses Apple&apos;s on-device Foundation Models to remove filler words and fix punctuation. When off, only basic local formatting is applied.</source>
        <translation>Entfernt mit einem Sprachmodell-Server auf diesem Rechner Füllwörter und korrigiert die Zeichensetzung. Ist dies ausgeschaltet, wird der Text nur einfach lokal formatiert.</translation>
    </message>
    <message>
        <source>Actively trims filler, redundancy, and hedging instead of just lightly cleaning up your wording. Off by default since it rewrites more than Talmo normally does.</source>
        <translation>Kürzt Füllwörter, Wiederholungen und Abschwächungen, statt den Wortlaut nur leicht zu glätten. Standardmäßig ausgeschaltet, da mehr umformuliert wird als sonst.</translation>
    </message>
    <message>
        <source>Rewrites dictation to match the selected tone. Combinable with Concise text above. &quot;Standard&quot; makes no tone change.</source>
        <translation>Formuliert das Diktat im gewählten Ton um. Lässt sich mit „Knapper Text“ oben kombinieren. „Standard“ ändert den Ton nicht.</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Professional</source>
        <translation>Professionell</translation>
    </message>
    <message>
        <source>Friendly</source>
        <translation>Freundlich</translation>
    </message>
    <message>
        <source>Polite</source>
        <translation>Höflich</translation>
    </message>
    <message>
        <source>Push-to-talk</source>
        <translation>Sprechtaste</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>Cleanup</source>
        <translation>Überarbeitung</translation>
    </message>
    <message>
        <source>Enable AI cleanup</source>
        <translation>KI-Überarbeitung einschalten</translation>
    </message>
    <message>
        <source>Concise text</source>
        <translation>Knapper Text</translation>
    </message>
    <message>
        <source>Tone</source>
        <translation>Ton</translation>
    </message>
    <message>
        <source>Say it and it happens — like traditional dictation software:</source>
        <translation>Gesprochen, getan – wie in klassischer Diktiersoftware (nur auf Englisch):</translation>
    </message>
    <message>
        <source>&quot;...as bullet points&quot; → formats as a bullet list</source>
        <translation>„... as bullet points“ → formatiert als Aufzählung</translation>
    </message>
    <message>
        <source>&quot;...new paragraph...&quot; → starts a new paragraph</source>
        <translation>„... new paragraph ...“ → beginnt einen neuen Absatz</translation>
    </message>
    <message>
        <source>&quot;...new line...&quot; → starts a new line</source>
        <translation>„... new line ...“ → beginnt eine neue Zeile</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Beim Anmelden starten</translation>
    </message>
    <message>
        <source>Talmo</source>
        <translation>Talmo</translation>
    </message>
    <message>
        <source>Start Recording</source>
        <translation>Aufnahme starten</translation>
    </message>
    <message>
        <source>Microphone access needed</source>
        <translation>Zugriff auf das Mikrofon erforderlich</translation>
    </message>
    <message>
        <source>Speech recognition access needed</source>
        <translation>Zugriff auf die Spracherkennung erforderlich</translation>
    </message>
    <message>
        <source>Accessibility access needed</source>
        <translation>Talmo kann nicht in andere Fenster schreiben</translation>
    </message>
    <message>
        <source>Talmo needs permissions</source>
        <translation>Talmo benötigt Berechtigungen</translation>
    </message>
    <message>
        <source>Talmo is ready</source>
        <translation>Talmo ist bereit</translation>
    </message>
    <message>
        <source>Hold %1, or double-tap for hands-free</source>
        <translation>%1 halten, oder für freihändig zweimal drücken</translation>
    </message>
    <message>
        <source>Listening…</source>
        <translation>Hört zu …</translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation>Aufnahme beenden</translation>
    </message>
    <message>
        <source>Cleaning up…</source>
        <translation>Wird überarbeitet …</translation>
    </message>
    <message>
        <source>Inserting…</source>
        <translation>Wird eingefügt …</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>Etwas ist schiefgegangen</translation>
    </message>
    <message>
        <source>Grant Permissions…</source>
        <translation>Berechtigungen erteilen …</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>⌘,</source>
        <translation>Strg+,</translation>
    </message>
    <message>
        <source>Quit Talmo</source>
        <translation>Talmo beenden</translation>
    </message>
    <message>
        <source>Talmo has no backend, no account, and no network functionality. Recording, transcription, and text cleanup all run using Apple&apos;s on-device Speech and Foundation Models frameworks. Nothing you say or type is sent anywhere.</source>
        <translation>Talmo hat weder Server noch Konto. Aufnahme und Erkennung finden auf diesem Rechner statt. Ist die KI-Überarbeitung eingeschaltet, wird der Text an einen Sprachmodell-Server auf diesem Rechner gesendet, falls einer läuft, und nirgendwohin sonst. Talmo selbst nutzt das Internet nur, um einmalig ein Erkennungsmodell herunterzuladen.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>Speech Recognition</source>
        <translation>Spracherkennung</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>In andere Fenster schreiben</translation>
    </message>
    <message>
        <source>Audio and transcripts are processed locally on this Mac.</source>
        <translation>Ton und Text werden lokal auf diesem Rechner verarbeitet.</translation>
    </message>
    <message>
        <source>Open Settings…</source>
        <translation>Einstellungen öffnen …</translation>
    </message>
    <message>
        <source>Granted</source>
        <translation>Erteilt</translation>
    </message>
    <message>
        <source>Not granted</source>
        <translation>Nicht erteilt</translation>
    </message>
    <message>
        <source>Listening</source>
        <translation>Hört zu</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Datenschutz</translation>
    </message>
    <message>
        <source>Talmo Settings</source>
        <translation>Talmo-Einstellungen</translation>
    </message>
    <message>
        <source>Automatic (best installed)</source>
        <translation>Automatisch (beste installierte)</translation>
    </message>
    <message>
        <source>This model is not installed; another one is used.</source>
        <translation>Dieses Modell ist nicht installiert; ein anderes wird verwendet.</translation>
    </message>
    <message>
        <source>Recogniser</source>
        <translation>Spracherkennung</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Installation</source>
        <translation>Installation</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Licence: %1</source>
        <translation>Lizenz: %1</translation>
    </message>
    <message>
        <source>Still working on the last sentence</source>
        <translation>Der letzte Satz wird noch verarbeitet</translation>
    </message>
    <message>
        <source>Speech recognition stopped responding. Copy Last Dictation in the menu has what was heard until then.</source>
        <translation>Die Spracherkennung reagiert nicht mehr. „Letztes Diktat kopieren“ im Menü enthält, was bis dahin gehört wurde.</translation>
    </message>
    <message>
        <source>The cursor is in a password field, so nothing was pasted. Choose “Copy Last Dictation” from the icon&apos;s menu.</source>
        <translation>Der Cursor steht in einem Passwortfeld, daher wurde nichts eingefügt. „Letztes Diktat kopieren“ im Menü des Symbols wählen.</translation>
    </message>
    <message>
        <source>Talmo does not paste if the application in front reports that the cursor is in a password field. Requires the desktop&apos;s accessibility service.</source>
        <translation>Talmo fügt nichts ein, wenn die Anwendung im Vordergrund meldet, dass der Cursor in einem Passwortfeld steht. Benötigt den Dienst für Barrierefreiheit der Arbeitsumgebung.</translation>
    </message>
    <message>
        <source>Protect password fields</source>
        <translation>Passwortfelder schützen</translation>
    </message>
    <message>
        <source>Your text is sent to %1 at %2.</source>
        <translation>Ihr Text wird an %1 unter %2 gesendet.</translation>
    </message>
    <message>
        <source>While this is off, no text is sent to %1 at %2.</source>
        <translation>Solange dies ausgeschaltet ist, wird kein Text an %1 unter %2 gesendet.</translation>
    </message>
    <message>
        <source>Another user&apos;s program is listening at %1. Your text is not sent to it.</source>
        <translation>Unter %1 lauscht das Programm eines anderen Benutzers. Ihr Text wird nicht dorthin gesendet.</translation>
    </message>
    <message>
        <source>The settings could not be saved. Is the disk full?</source>
        <translation>Die Einstellungen konnten nicht gespeichert werden. Ist die Festplatte voll?</translation>
    </message>
    <message>
        <source>The sound server is not responding. Try again in a moment.</source>
        <translation>Der Soundserver reagiert nicht. Bitte gleich erneut versuchen.</translation>
    </message>
    <message>
        <source>The connection to the sound server was lost. Try again.</source>
        <translation>Die Verbindung zum Soundserver wurde getrennt. Bitte erneut versuchen.</translation>
    </message>
    <message>
        <source>The operation was cancelled.</source>
        <translation>Der Vorgang wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Nothing has been dictated yet.</source>
        <translation>Es wurde noch nichts diktiert.</translation>
    </message>
    <message>
        <source>The text is too long.</source>
        <translation>Der Text ist zu lang.</translation>
    </message>
    <message>
        <source>The request took too long to arrive.</source>
        <translation>Die Anfrage kam nicht rechtzeitig an.</translation>
    </message>
    <message>
        <source>Unknown request.</source>
        <translation>Unbekannte Anfrage.</translation>
    </message>
    <message>
        <source>There is no earlier clipboard to restore.</source>
        <translation>Es gibt keine frühere Zwischenablage zum Wiederherstellen.</translation>
    </message>
    <message>
        <source>Talmo did not respond.</source>
        <translation>Talmo hat nicht geantwortet.</translation>
    </message>
    <message>
        <source>The window is not responding. The text is on the clipboard and will be inserted when the window recovers.</source>
        <translation>Das Fenster reagiert nicht. Der Text ist in der Zwischenablage und wird eingefügt, sobald das Fenster wieder reagiert.</translation>
    </message>
    <message>
        <source>No window has keyboard focus. The text is on the clipboard: paste it with %1.</source>
        <translation>Kein Fenster hat den Tastaturfokus. Der Text ist in der Zwischenablage: mit %1 einfügen.</translation>
    </message>
    <message>
        <source>Another program has grabbed the keyboard. The text is on the clipboard: paste it with %1.</source>
        <translation>Ein anderes Programm hat die Tastatur gesperrt. Der Text ist in der Zwischenablage: mit %1 einfügen.</translation>
    </message>
    <message>
        <source>This keyboard layout has no key for pasting. The text is on the clipboard: paste it from a menu.</source>
        <translation>Diese Tastaturbelegung hat keine Taste zum Einfügen. Der Text ist in der Zwischenablage: über ein Menü einfügen.</translation>
    </message>
    <message>
        <source>The active window changed. The text is on the clipboard: paste it with %1.</source>
        <translation>Das aktive Fenster hat gewechselt. Der Text ist in der Zwischenablage: mit %1 einfügen.</translation>
    </message>
    <message>
        <source>Another program replaced the clipboard. Choose “Copy Last Dictation” from the icon&apos;s menu.</source>
        <translation>Ein anderes Programm hat die Zwischenablage ersetzt. „Letztes Diktat kopieren“ im Menü des Symbols wählen.</translation>
    </message>
    <message>
        <source>No window accepted the text. It is on the clipboard: paste it with %1.</source>
        <translation>Kein Fenster hat den Text angenommen. Er ist in der Zwischenablage: mit %1 einfügen.</translation>
    </message>
    <message>
        <source>disabled in the settings</source>
        <translation>in den Einstellungen ausgeschaltet</translation>
    </message>
    <message>
        <source>no model server is running on this machine</source>
        <translation>auf diesem Rechner läuft kein Modellserver</translation>
    </message>
    <message>
        <source>not checked yet</source>
        <translation>noch nicht geprüft</translation>
    </message>
    <message>
        <source>Part of the clipboard was lost: it held more than Talmo can keep. Copy it again if you need it.</source>
        <translation>Ein Teil der Zwischenablage ging verloren: Sie enthielt mehr, als Talmo behalten kann. Bei Bedarf erneut kopieren.</translation>
    </message>
    <message>
        <source>Part of the clipboard was lost: its application did not provide it in time. Copy it again if you need it.</source>
        <translation>Ein Teil der Zwischenablage ging verloren: Die zugehörige Anwendung hat ihn nicht rechtzeitig geliefert. Bei Bedarf erneut kopieren.</translation>
    </message>
    <message>
        <source>The built-in speech model is damaged. Reinstall the package pocketsphinx-en-us.</source>
        <translation>Das eingebaute Erkennungsmodell ist beschädigt. Das Paket pocketsphinx-en-us neu installieren.</translation>
    </message>
    <message>
        <source>The connection timed out.</source>
        <translation>Zeitüberschreitung der Verbindung.</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Wird heruntergeladen: </translation>
    </message>
    <message>
        <source>Verifying</source>
        <translation>Wird geprüft</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>Wird entpackt</translation>
    </message>
    <message>
        <source>Testing</source>
        <translation>Wird getestet</translation>
    </message>
    <message>
        <source>Talmo cannot write to its folder for models. Check the folder&apos;s permissions.</source>
        <translation>Talmo kann nicht in seinen Modellordner schreiben. Bitte die Zugriffsrechte des Ordners prüfen.</translation>
    </message>
    <message>
        <source>Another model is being installed or removed. Try again when that has finished.</source>
        <translation>Ein anderes Modell wird gerade installiert oder entfernt. Danach erneut versuchen.</translation>
    </message>
    <message>
        <source>The server cannot resume this download; starting over.</source>
        <translation>Der Server kann diesen Download nicht fortsetzen; er beginnt von vorn.</translation>
    </message>
    <message>
        <source>The server resumed at the wrong offset.</source>
        <translation>Der Server hat an der falschen Stelle fortgesetzt.</translation>
    </message>
    <message>
        <source>The server sent more data than announced.</source>
        <translation>Der Server hat mehr Daten gesendet als angekündigt.</translation>
    </message>
    <message>
        <source>The connection closed before the download was complete.</source>
        <translation>Die Verbindung wurde vor dem Ende des Downloads geschlossen.</translation>
    </message>
    <message>
        <source>The speech model isn&apos;t installed. Install the package pocketsphinx-en-us.</source>
        <translation>Das Erkennungsmodell ist nicht installiert. Das Paket pocketsphinx-en-us installieren.</translation>
    </message>
    <message>
        <source>This speech model can no longer be used. Install it again.</source>
        <translation>Dieses Erkennungsmodell ist nicht mehr verwendbar. Bitte neu installieren.</translation>
    </message>
    <message>
        <source>Copy Last Dictation</source>
        <translation>Letztes Diktat kopieren</translation>
    </message>
    <message>
        <source>Restore Earlier Clipboard</source>
        <translation>Frühere Zwischenablage wiederherstellen</translation>
    </message>
    <message>
        <source>Editing took longer than %1 seconds three times. A smaller model is faster, for example %2 (%3 MB, %4).</source>
        <translation>Dreimal hat die Überarbeitung mehr als %1 Sekunden gebraucht. Ein kleineres Modell ist schneller, zum Beispiel %2 (%3 MB, %4).</translation>
    </message>
    <message>
        <source>Editing took longer than %1 seconds three times. It is faster with a smaller model, or with AI cleanup turned off.</source>
        <translation>Dreimal hat die Überarbeitung mehr als %1 Sekunden gebraucht. Mit einem kleineren Modell oder ausgeschalteter KI-Überarbeitung geht es schneller.</translation>
    </message>
    <message>
        <source>%1: stop · Esc: discard</source>
        <translation>%1: beenden · Esc: verwerfen</translation>
    </message>
    <message>
        <source>%1: stop</source>
        <translation>%1: beenden</translation>
    </message>
    <message>
        <source>Esc: discard</source>
        <translation>Esc: verwerfen</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Verworfen</translation>
    </message>
    <message>
        <source>Pause Talmo</source>
        <translation>Talmo anhalten</translation>
    </message>
    <message>
        <source>Resume Talmo</source>
        <translation>Talmo fortsetzen</translation>
    </message>
    <message>
        <source>Talmo is paused</source>
        <translation>Talmo ist angehalten</translation>
    </message>
    <message>
        <source>The key does nothing until you resume</source>
        <translation>Die Taste bleibt bis zum Fortsetzen ohne Wirkung</translation>
    </message>
    <message>
        <source>Dictating</source>
        <translation>Diktieren</translation>
    </message>
    <message>
        <source>Space between dictations</source>
        <translation>Leerzeichen zwischen Diktaten</translation>
    </message>
    <message>
        <source>Puts a space before a dictation that continues the last one: in the same window, with no key or click in between.</source>
        <translation>Setzt ein Leerzeichen vor ein Diktat, welches das letzte fortsetzt: im selben Fenster, ohne Tastendruck oder Klick dazwischen.</translation>
    </message>
    <message>
        <source>Sounds</source>
        <translation>Klänge</translation>
    </message>
    <message>
        <source>Plays a sound of the desktop when a recording starts, when it ends and when something goes wrong.</source>
        <translation>Spielt einen Klang der Arbeitsumgebung, wenn eine Aufnahme beginnt, wenn sie endet und wenn etwas schiefgeht.</translation>
    </message>
    <message>
        <source>Each is heard as well as written your way. If one is misheard, select it and write what it sounds like.</source>
        <translation>Jedes Wort wird so geschrieben und auch so erkannt. Wird eines falsch verstanden: auswählen und eintragen, wie es klingt.</translation>
    </message>
    <message>
        <source>Each is heard as well as written your way.</source>
        <translation>Jedes Wort wird so geschrieben und auch so erkannt.</translation>
    </message>
    <message>
        <source>Sounds like</source>
        <translation>Klingt wie</translation>
    </message>
    <message>
        <source>Used by the built-in recogniser</source>
        <translation>Wird von der eingebauten Spracherkennung verwendet</translation>
    </message>
    <message>
        <source>Needs AI cleanup with a language model. Without one, these words are left out and no list is made.</source>
        <translation>Benötigt die KI-Überarbeitung mit einem Sprachmodell. Ohne Sprachmodell werden diese Wörter weggelassen und keine Liste erstellt.</translation>
    </message>
    <message>
        <source>The last 50, in memory only: they are gone when Talmo ends or you switch this off. Nothing is kept that went into a field which reports itself as a password field.</source>
        <translation>Die letzten 50, nur im Arbeitsspeicher: Sie verschwinden, wenn Talmo endet oder dies ausgeschaltet wird. Nicht behalten wird, was in ein Feld ging, das sich als Passwortfeld meldet.</translation>
    </message>
    <message>
        <source>Keep a list of dictations</source>
        <translation>Liste der Diktate behalten</translation>
    </message>
    <message>
        <source>Dictations</source>
        <translation>Diktate</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>Textdateien (*.txt);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Import…</source>
        <translation>Importieren …</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren …</translation>
    </message>
    <message>
        <source>Import Words</source>
        <translation>Wörter importieren</translation>
    </message>
    <message>
        <source>Export Words</source>
        <translation>Wörter exportieren</translation>
    </message>
    <message>
        <source>This file could not be read as text. Choose a text file with one word per line.</source>
        <translation>Diese Datei konnte nicht als Text gelesen werden. Eine Textdatei mit einem Wort pro Zeile wählen.</translation>
    </message>
    <message>
        <source>New words: %1</source>
        <translation>Neue Wörter: %1</translation>
    </message>
    <message>
        <source>The words could not be saved there. Choose another folder, or free some disk space.</source>
        <translation>Die Wörter konnten dort nicht gespeichert werden. Einen anderen Ordner wählen oder Speicherplatz freigeben.</translation>
    </message>
    <message>
        <source>Words saved: %1</source>
        <translation>Gespeicherte Wörter: %1</translation>
    </message>
    <message>
        <source>%1, sounds like %2</source>
        <translation>%1, klingt wie %2</translation>
    </message>
    <message>
        <source>Licences: %1</source>
        <translation>Lizenzen: %1</translation>
    </message>
    <message>
        <source>Talmo cannot use models of this kind: </source>
        <translation>Talmo kann Modelle dieser Art nicht verwenden: </translation>
    </message>
    <message>
        <source>These models need the library of sherpa-onnx, which is not where the settings say, or does not exist for this computer. Remove linux.neuralLibrary from Talmo&apos;s settings file to have it downloaded.</source>
        <translation>Diese Modelle benötigen die Bibliothek von sherpa-onnx, die nicht dort ist, wo die Einstellungen angeben, oder für diesen Rechner nicht existiert. linux.neuralLibrary aus Talmos Einstellungsdatei entfernen, damit sie heruntergeladen wird.</translation>
    </message>
    <message>
        <source>The server cannot be reached. Check the network connection, then try again; the download goes on where it stopped.</source>
        <translation>Der Server ist nicht erreichbar. Die Netzwerkverbindung prüfen und erneut versuchen; der Download geht dort weiter, wo er aufgehört hat.</translation>
    </message>
    <message>
        <source>The file on the server is not the one that Talmo knows; its maker has probably renewed it. Update Talmo, or accept the new file with this command: </source>
        <translation>Die Datei auf dem Server ist nicht die, die Talmo kennt; vermutlich hat ihr Hersteller sie erneuert. Talmo aktualisieren oder die neue Datei mit diesem Befehl annehmen: </translation>
    </message>
    <message>
        <source>This model is too slow for this computer: </source>
        <translation>Dieses Modell ist für diesen Rechner zu langsam: </translation>
    </message>
    <message>
        <source>This model needs a newer library than the installed one. Install the model again, and the library comes with it: </source>
        <translation>Dieses Modell benötigt eine neuere Bibliothek als die installierte. Das Modell neu installieren; die Bibliothek kommt dann mit: </translation>
    </message>
    <message>
        <source>Installing a recogniser…</source>
        <translation>Spracherkennung wird installiert …</translation>
    </message>
    <message>
        <source>Get better recognition</source>
        <translation>Bessere Spracherkennung einrichten</translation>
    </message>
    <message>
        <source>Ctrl+Shift+V</source>
        <translation>Strg+Umschalt+V</translation>
    </message>
    <message>
        <source>Shift+Insert</source>
        <translation>Umschalt+Einfg</translation>
    </message>
    <message>
        <source>Ctrl+V</source>
        <translation>Strg+V</translation>
    </message>
    <message>
        <source>Left Ctrl</source>
        <translation>Strg links</translation>
    </message>
    <message>
        <source>Right Ctrl</source>
        <translation>Strg rechts</translation>
    </message>
    <message>
        <source>Left Shift</source>
        <translation>Umschalt links</translation>
    </message>
    <message>
        <source>Right Shift</source>
        <translation>Umschalt rechts</translation>
    </message>
    <message>
        <source>Left Alt</source>
        <translation>Alt links</translation>
    </message>
    <message>
        <source>Right Alt</source>
        <translation>Alt rechts</translation>
    </message>
    <message>
        <source>AltGr</source>
        <translation>AltGr</translation>
    </message>
    <message>
        <source>Left Super</source>
        <translation>Super links</translation>
    </message>
    <message>
        <source>Right Super</source>
        <translation>Super rechts</translation>
    </message>
    <message>
        <source>Caps Lock</source>
        <translation>Feststelltaste</translation>
    </message>
    <message>
        <source>Scroll Lock</source>
        <translation>Rollen</translation>
    </message>
    <message>
        <source>Num Lock</source>
        <translation>Num</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Print Screen</source>
        <translation>Druck</translation>
    </message>
    <message>
        <source>Fn</source>
        <translation>Fn</translation>
    </message>
    <message>
        <source>Copied: press %1</source>
        <translation>Kopiert: %1 drücken</translation>
    </message>
    <message>
        <source>Dictation key</source>
        <translation>Diktiertaste</translation>
    </message>
    <message>
        <source>This desktop may not tell Talmo about keys while a Wayland window is in front.</source>
        <translation>Diese Arbeitsumgebung meldet Talmo Tasten möglicherweise nicht, während ein Wayland-Fenster vorn ist.</translation>
    </message>
    <message>
        <source>Bind a key to “talmoctl toggle” in the desktop&apos;s keyboard settings.</source>
        <translation>Belegen Sie in den Tastatureinstellungen der Arbeitsumgebung eine Taste mit „talmoctl toggle“.</translation>
    </message>
    <message>
        <source>Inserting text</source>
        <translation>Text einfügen</translation>
    </message>
    <message>
        <source>This desktop does not let Talmo type into Wayland windows.</source>
        <translation>Diese Arbeitsumgebung lässt Talmo nicht in Wayland-Fenster schreiben.</translation>
    </message>
    <message>
        <source>After a dictation, paste the text with Ctrl+V.</source>
        <translation>Fügen Sie den Text nach dem Diktat mit Strg+V ein.</translation>
    </message>
    <message>
        <source>The desktop&apos;s sound server is not running. Start PipeWire or PulseAudio, or log in again.</source>
        <translation>Der Soundserver der Arbeitsumgebung läuft nicht. PipeWire oder PulseAudio starten oder neu anmelden.</translation>
    </message>
    <message>
        <source>The microphone “%1” gives only silence. Is it muted?</source>
        <translation>Das Mikrofon „%1“ liefert nur Stille. Ist es stummgeschaltet?</translation>
    </message>
    <message>
        <source>The microphone “%1” was unplugged. Plug it in again, or choose another one in Talmo&apos;s settings.</source>
        <translation>Das Mikrofon „%1“ wurde getrennt. Wieder anschließen oder in Talmos Einstellungen ein anderes wählen.</translation>
    </message>
    <message>
        <source>The settings file names a key “%1”, which does not exist. Press the key you want instead.</source>
        <translation>Die Einstellungsdatei nennt eine Taste „%1“, die es nicht gibt. Stattdessen die gewünschte Taste drücken.</translation>
    </message>
    <message>
        <source>“%1” types text, so it cannot be held. Choose a key that types nothing, such as F9.</source>
        <translation>„%1“ schreibt Text und kann daher nicht gehalten werden. Eine Taste wählen, die nichts schreibt, zum Beispiel F9.</translation>
    </message>
    <message>
        <source>Your keyboard layout has no key “%1”. Press the key you want instead.</source>
        <translation>Ihre Tastaturbelegung hat keine Taste „%1“. Stattdessen die gewünschte Taste drücken.</translation>
    </message>
    <message>
        <source>Another program uses “%1” as well, and reacts to it too. Choose another key, or change that program.</source>
        <translation>Ein anderes Programm verwendet „%1“ ebenfalls und reagiert auch darauf. Eine andere Taste wählen oder jenes Programm umstellen.</translation>
    </message>
    <message>
        <source>The keyboard layout has no name for this key. Press another one.</source>
        <translation>Die Tastaturbelegung hat keinen Namen für diese Taste. Eine andere drücken.</translation>
    </message>
    <message>
        <source>System language (%1)</source>
        <translation>Systemsprache (%1)</translation>
    </message>
    <message>
        <source>Dictating in %1 needs another recogniser.</source>
        <translation>Diktieren in dieser Sprache (%1) benötigt eine andere Spracherkennung.</translation>
    </message>
    <message>
        <source>System default</source>
        <translation>Systemvorgabe</translation>
    </message>
    <message>
        <source>System default (%1)</source>
        <translation>Systemvorgabe (%1)</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <translation>%1 (nicht angeschlossen)</translation>
    </message>
    <message>
        <source>The sound server does not let Talmo record. Check the desktop&apos;s privacy settings.</source>
        <translation>Der Soundserver lässt Talmo nicht aufnehmen. Bitte die Datenschutzeinstellungen der Arbeitsumgebung prüfen.</translation>
    </message>
    <message>
        <source>No microphone was found. Plug one in, or enable one in the desktop&apos;s sound settings.</source>
        <translation>Kein Mikrofon gefunden. Eines anschließen oder in den Klangeinstellungen der Arbeitsumgebung einschalten.</translation>
    </message>
    <message>
        <source>“%1” is not connected. Until it is, the system&apos;s default microphone is used.</source>
        <translation>„%1“ ist nicht angeschlossen. Bis dahin wird das Standardmikrofon des Systems verwendet.</translation>
    </message>
    <message>
        <source>Microphone unplugged</source>
        <translation>Mikrofon getrennt</translation>
    </message>
    <message>
        <source>“%1” is not connected. Talmo records from the system&apos;s default microphone instead.</source>
        <translation>„%1“ ist nicht angeschlossen. Talmo nimmt stattdessen mit dem Standardmikrofon des Systems auf.</translation>
    </message>
    <message>
        <source>Talmo is running. This desktop has no place for its icon: start Talmo again to open its settings.</source>
        <translation>Talmo läuft. Diese Arbeitsumgebung hat keinen Platz für sein Symbol: Talmo erneut starten, um die Einstellungen zu öffnen.</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Bild auf</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Bild ab</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is not installed. Install the recogniser in Talmo&apos;s settings, or with “talmoctl setup”.</source>
        <translation>Die Bibliothek der neuronalen Spracherkennung ist nicht installiert. Die Spracherkennung in Talmos Einstellungen oder mit „talmoctl setup“ installieren.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library cannot be loaded. Install the recogniser again.</source>
        <translation>Die Bibliothek der neuronalen Spracherkennung lässt sich nicht laden. Die Spracherkennung neu installieren.</translation>
    </message>
    <message>
        <source>A key such as F9 no longer reaches other programs, except together with Ctrl, Alt, Shift or Super. A modifier such as Right Ctrl keeps working in them.</source>
        <translation>Eine Taste wie F9 erreicht andere Programme nicht mehr, außer zusammen mit Strg, Alt, Umschalt oder Super. Eine Umschalttaste wie „Strg rechts“ wirkt dort weiterhin.</translation>
    </message>
    <message>
        <source>Press the key now. Esc leaves it as it is.</source>
        <translation>Jetzt die Taste drücken. Esc lässt alles, wie es ist.</translation>
    </message>
    <message>
        <source>Press a key…</source>
        <translation>Taste drücken …</translation>
    </message>
    <message>
        <source>Press the key you want</source>
        <translation>Gewünschte Taste drücken</translation>
    </message>
    <message>
        <source>Add another</source>
        <translation>Weitere hinzufügen</translation>
    </message>
    <message>
        <source>No %1 on your keyboard?</source>
        <translation>Keine Taste „%1“ auf Ihrer Tastatur?</translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation>%1 verwenden</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Dictate in</source>
        <translation>Diktieren auf</translation>
    </message>
    <message>
        <source>Set it up</source>
        <translation>Einrichten</translation>
    </message>
    <message>
        <source>Use English for now</source>
        <translation>Vorerst Englisch verwenden</translation>
    </message>
    <message>
        <source>Microphone level</source>
        <translation>Mikrofonpegel</translation>
    </message>
    <message>
        <source>Talmo listens only while you dictate or test the microphone.</source>
        <translation>Talmo hört nur zu, während Sie diktieren oder das Mikrofon testen.</translation>
    </message>
    <message>
        <source>Say something: the bar moves. Talmo listens while this page is open, and later only while you dictate.</source>
        <translation>Etwas sagen: Der Balken bewegt sich. Talmo hört zu, solange diese Seite offen ist, später nur, während Sie diktieren.</translation>
    </message>
    <message>
        <source>Record from</source>
        <translation>Aufnehmen mit</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Testen</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>Welcome to Talmo</source>
        <translation>Willkommen bei Talmo</translation>
    </message>
    <message>
        <source>Hold %1, speak, and let go: your words are typed where the cursor is, in any program. Tap the key twice to dictate hands-free. Nothing that you say leaves this computer.</source>
        <translation>%1 halten, sprechen und loslassen: Ihre Worte werden dort geschrieben, wo der Cursor steht, in jedem Programm. Die Taste zweimal kurz drücken, um freihändig zu diktieren. Nichts von dem, was Sie sagen, verlässt diesen Rechner.</translation>
    </message>
    <message>
        <source>Starting Talmo again opens its settings. So does its microphone icon, if your panel has a place for it.</source>
        <translation>Ein erneuter Start von Talmo öffnet die Einstellungen, ebenso das Mikrofonsymbol, wenn die Leiste Platz dafür hat.</translation>
    </message>
    <message>
        <source>The key to hold</source>
        <translation>Die Taste zum Halten</translation>
    </message>
    <message>
        <source>Hold this key to speak</source>
        <translation>Diese Taste zum Sprechen halten</translation>
    </message>
    <message>
        <source>Try it</source>
        <translation>Ausprobieren</translation>
    </message>
    <message>
        <source>A field to try it in</source>
        <translation>Ein Feld zum Ausprobieren</translation>
    </message>
    <message>
        <source>Recognition</source>
        <translation>Erkennung</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Click here, hold %1 and say: This is my first dictation.</source>
        <translation>Hier klicken, %1 halten und sagen: This is my first dictation.</translation>
    </message>
    <message>
        <source>This desktop does not let Talmo type into other programs.</source>
        <translation>Diese Arbeitsumgebung lässt Talmo nicht in andere Programme schreiben.</translation>
    </message>
    <message>
        <source>GNOME lets Talmo hear its key and paste only with the help of an extension, which comes with Talmo and does nothing else.</source>
        <translation>GNOME lässt Talmo die Taste nur mit Hilfe einer Erweiterung hören und einfügen. Sie gehört zu Talmo und tut nichts anderes.</translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is enabled. Log out and in once to start it.</source>
        <translation>Talmos GNOME-Erweiterung ist eingeschaltet. Melden Sie sich einmal ab und wieder an, um sie zu starten.</translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is enabled.</source>
        <translation>Talmos GNOME-Erweiterung ist eingeschaltet.</translation>
    </message>
    <message>
        <source>GNOME&apos;s extensions are switched off. Switch them on in the Extensions application, then enable Talmo&apos;s here.</source>
        <translation>GNOMEs Erweiterungen sind ausgeschaltet. Schalten Sie sie in der Anwendung „Erweiterungen“ ein, danach hier die von Talmo.</translation>
    </message>
    <message>
        <source>GNOME could not start Talmo&apos;s extension. Update Talmo, then log out and in once.</source>
        <translation>GNOME konnte Talmos Erweiterung nicht starten. Aktualisieren Sie Talmo und melden Sie sich einmal ab und wieder an.</translation>
    </message>
    <message>
        <source>This desktop</source>
        <translation>Diese Arbeitsumgebung</translation>
    </message>
    <message>
        <source>Enable the extension</source>
        <translation>Erweiterung einschalten</translation>
    </message>
    <message>
        <source>Hold to dictate</source>
        <translation>Halten, um zu diktieren</translation>
    </message>
    <message>
        <source>Another program&apos;s shortcut is the dictation key already.</source>
        <translation>Die Diktiertaste ist bereits das Tastenkürzel eines anderen Programms.</translation>
    </message>
    <message>
        <source>Remove that shortcut in KDE&apos;s settings, then start Talmo again.</source>
        <translation>Entfernen Sie dieses Tastenkürzel in den Einstellungen von KDE und starten Sie Talmo erneut.</translation>
    </message>
    <message>
        <source>recommended</source>
        <translation>empfohlen</translation>
    </message>
    <message>
        <source>Built in, to begin with (English)</source>
        <translation>Eingebaut, für den Anfang (Englisch)</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>Details in the menu</source>
        <translation>Details im Menü</translation>
    </message>
    <message>
        <source>Speech is recognised on this computer whichever recogniser you choose; the network is used only to download models.</source>
        <translation>Unabhängig von der gewählten Spracherkennung wird auf diesem Rechner erkannt; das Netz wird nur zum Herunterladen von Modellen genutzt.</translation>
    </message>
    <message>
        <source>Inserted</source>
        <translation>Eingefügt</translation>
    </message>
    <message>
        <source>Recommended</source>
        <translation>Empfohlen</translation>
    </message>
    <message>
        <source>None until you pause</source>
        <translation>Keiner bis zur Pause</translation>
    </message>
    <message>
        <source>The model for the live text is not installed; text appears when you pause.</source>
        <translation>Das Modell für den Live-Text ist nicht installiert; Text erscheint in Sprechpausen.</translation>
    </message>
    <message>
        <source>Live text</source>
        <translation>Live-Text</translation>
    </message>
    <message>
        <source>Final text</source>
        <translation>Endgültiger Text</translation>
    </message>
    <message>
        <source>The live text is shown while you speak. The final text replaces it and is inserted.</source>
        <translation>Der Live-Text wird beim Sprechen angezeigt. Der endgültige Text ersetzt ihn und wird eingefügt.</translation>
    </message>
    <message>
        <source>The desktop did not allow it for good. Switch this off and on again, and allow it in the dialog for later sessions too.</source>
        <translation>Die Arbeitsumgebung hat es nicht auf Dauer erlaubt. Bitte aus- und wieder einschalten und im Dialog auch für spätere Sitzungen erlauben.</translation>
    </message>
    <message>
        <source>The desktop did not give Talmo a dictation key. Ask again in the settings, under Privacy, or bind a key to “talmoctl toggle” in the desktop&apos;s keyboard settings.</source>
        <translation>Die Arbeitsumgebung hat Talmo keine Diktiertaste gegeben. Bitte in den Einstellungen unter „Datenschutz“ erneut anfragen oder in den Tastatureinstellungen der Arbeitsumgebung eine Taste mit „talmoctl toggle“ belegen.</translation>
    </message>
    <message>
        <source>Ask for the key again</source>
        <translation>Taste erneut anfragen</translation>
    </message>
    <message>
        <source>The desktop asks which key starts dictation.</source>
        <translation>Die Arbeitsumgebung fragt, welche Taste das Diktieren beginnt.</translation>
    </message>
    <message>
        <source>The desktop&apos;s key for dictation: %1</source>
        <translation>Taste der Arbeitsumgebung zum Diktieren: %1</translation>
    </message>
    <message>
        <source>This desktop lets Talmo type into Wayland windows only if you allow it.</source>
        <translation>Diese Arbeitsumgebung lässt Talmo nur mit Ihrer Erlaubnis in Wayland-Fenster tippen.</translation>
    </message>
    <message>
        <source>Allow it in the settings, under Privacy. Until then, paste the text with Ctrl+V.</source>
        <translation>Bitte in den Einstellungen unter „Datenschutz“ erlauben. Bis dahin den Text mit Strg+V einfügen.</translation>
    </message>
    <message>
        <source>Paste with the desktop&apos;s remote control</source>
        <translation>Mit der Fernsteuerung der Arbeitsumgebung einfügen</translation>
    </message>
    <message>
        <source>Lets Talmo press the paste shortcut in Wayland windows. The desktop may ask once, and may show that it is controlled while Talmo pastes.</source>
        <translation>Lässt Talmo in Wayland-Fenstern das Tastenkürzel zum Einfügen drücken. Die Arbeitsumgebung fragt eventuell einmal nach und zeigt eventuell an, dass sie ferngesteuert wird, während Talmo einfügt.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>noch %1</translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is missing, so the key works in only a few programs. Reinstall the Talmo package.</source>
        <translation>Die GNOME-Erweiterung von Talmo fehlt, daher wirkt die Taste nur in wenigen Programmen. Bitte das Talmo-Paket neu installieren.</translation>
    </message>
    <message>
        <source>This speech model is for a recogniser that Talmo does not have. Update Talmo, or choose another one.</source>
        <translation>Dieses Erkennungsmodell gehört zu einer Spracherkennung, die Talmo nicht hat. Talmo aktualisieren oder ein anderes wählen.</translation>
    </message>
    <message>
        <source>A speech model could not be tested. Try again when the computer is less busy.</source>
        <translation>Ein Erkennungsmodell konnte nicht geprüft werden. Erneut versuchen, wenn der Rechner weniger beschäftigt ist.</translation>
    </message>
    <message>
        <source>The downloaded file cannot be used. Try again; if it fails again, choose another recogniser.</source>
        <translation>Die heruntergeladene Datei ist nicht verwendbar. Erneut versuchen; hilft das nicht, eine andere Spracherkennung wählen.</translation>
    </message>
    <message>
        <source>The download cannot be unpacked. Free some space on the disk, then try again.</source>
        <translation>Der Download lässt sich nicht entpacken. Auf der Festplatte Platz freigeben und erneut versuchen.</translation>
    </message>
    <message>
        <source>The downloaded file cannot be read. Try again.</source>
        <translation>Die heruntergeladene Datei lässt sich nicht lesen. Bitte erneut versuchen.</translation>
    </message>
    <message>
        <source>The download cannot be saved. Free some space on the disk, then try again.</source>
        <translation>Der Download lässt sich nicht speichern. Auf der Festplatte Platz freigeben und erneut versuchen.</translation>
    </message>
    <message>
        <source>The model “%1” is not installed.</source>
        <translation>Das Modell „%1“ ist nicht installiert.</translation>
    </message>
    <message>
        <source>“%1” is a link to a model stored elsewhere. Delete the link in the folder for models yourself.</source>
        <translation>„%1“ ist eine Verknüpfung mit einem Modell, das anderswo liegt. Bitte die Verknüpfung im Modellordner selbst löschen.</translation>
    </message>
    <message>
        <source>Some files of the model “%1” could not be deleted. Check the permissions of the folder for models.</source>
        <translation>Einige Dateien des Modells „%1“ konnten nicht gelöscht werden. Bitte die Zugriffsrechte des Modellordners prüfen.</translation>
    </message>
    <message>
        <source>The server cannot be trusted. Check this computer&apos;s date and network, then try again.</source>
        <translation>Der Server ist nicht vertrauenswürdig. Datum und Netzwerk dieses Rechners prüfen und erneut versuchen.</translation>
    </message>
    <message>
        <source>The server does not deliver this file at present. Try again later.</source>
        <translation>Der Server liefert diese Datei zurzeit nicht. Bitte später erneut versuchen.</translation>
    </message>
    <message>
        <source>There is not enough space on the disk. Free some, then try again. Needed: </source>
        <translation>Auf der Festplatte ist nicht genug Platz. Platz freigeben und erneut versuchen. Benötigt: </translation>
    </message>
    <message>
        <source>“%1” is still being installed. Wait for it to finish, or cancel it.</source>
        <translation>„%1“ wird noch installiert. Warten, bis das abgeschlossen ist, oder abbrechen.</translation>
    </message>
    <message>
        <source>Speech recognition failed. Try again; if it fails again, choose another recogniser in the settings.</source>
        <translation>Die Spracherkennung ist fehlgeschlagen. Erneut versuchen; hilft das nicht, in den Einstellungen eine andere wählen.</translation>
    </message>
    <message>
        <source>The speech-detection model that this speech model needs is missing. Reinstall this model to get both.</source>
        <translation>Das Modell zur Erkennung von Sprachpausen, das dieses Modell braucht, fehlt. Dieses Modell neu installieren, um beide zu erhalten.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is incomplete. Install the recogniser again.</source>
        <translation>Die Bibliothek der neuronalen Spracherkennung ist unvollständig. Die Spracherkennung neu installieren.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is of a version that models of this kind do not work with. Install the model again.</source>
        <translation>Mit dieser Version der Bibliothek der neuronalen Spracherkennung funktionieren Modelle dieser Art nicht. Das Modell neu installieren.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is too old. Install the recogniser again to get a newer one.</source>
        <translation>Die Bibliothek der neuronalen Spracherkennung ist zu alt. Die Spracherkennung neu installieren, um eine neuere zu erhalten.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is newer than this version of Talmo knows. Update Talmo, or install the recogniser again.</source>
        <translation>Die Bibliothek der neuronalen Spracherkennung ist neuer, als diese Version von Talmo sie kennt. Talmo aktualisieren oder die Spracherkennung neu installieren.</translation>
    </message>
    <message>
        <source>This speech model cannot be used. Install it again.</source>
        <translation>Dieses Erkennungsmodell ist nicht verwendbar. Bitte neu installieren.</translation>
    </message>
</context>
</TS>
