<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Talmo</name>
    <message>
        <source>Grant microphone and speech-recognition permissions first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No speech detected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An unknown error occurred.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This Mac doesn&apos;t support Apple Intelligence.</source>
        <translation>The language model is turned off in Talmo&apos;s settings file.</translation>
    </message>
    <message>
        <source>Apple Intelligence isn&apos;t turned on. Enable it in System Settings &gt; Apple Intelligence &amp; Siri to use AI cleanup.</source>
        <translation>No language model is running on this computer. Start one, such as llama.cpp&apos;s server or Ollama, to use AI cleanup.</translation>
    </message>
    <message>
        <source>The on-device language model is still preparing. Try again shortly.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The on-device language model isn&apos;t available right now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t set up microphone capture: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t start audio capture: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No microphone input is available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo needs Accessibility access (System Settings &gt; Privacy &amp; Security &gt; Accessibility) to insert text into other apps.</source>
        <translation>Talmo needs an X server with the XTEST and XInput 2.2 extensions to insert text into other apps.</translation>
    </message>
    <message>
        <source>Nothing to insert.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On-device speech recognition isn&apos;t available on this Mac.</source>
        <translation>On-device speech recognition isn&apos;t available on this computer.</translation>
    </message>
    <message>
        <source>The current language isn&apos;t supported for on-device transcription.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The on-device speech model for this language isn&apos;t installed yet. Installing it once requires an internet connection; after that, transcription works fully offline.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Couldn&apos;t find a compatible audio format for the microphone and speech recognizer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not currently recording.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Words and phrases you add here are passed to the cleanup step as context so they&apos;re preserved exactly, instead of being &quot;corrected&quot; away.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add a word or phrase</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dictionary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hold fn to record and release to insert, or double-tap fn for hands-free recording (press fn again to stop). Works even when Talmo isn&apos;t the frontmost app. Requires &quot;Press 🌐 key to: Do Nothing&quot; in System Settings &gt; Keyboard, so macOS&apos;s own Globe-key action doesn&apos;t also fire. Not yet configurable in this MVP.</source>
        <translation>Hold %1 to record and release to insert, or double-tap %1 for hands-free recording (press %1 again to stop). Works even when Talmo isn&apos;t the frontmost app. You can choose other keys below.</translation>
    </message>
    <message>
        <source>Uses Apple&apos;s on-device Foundation Models to remove filler words and fix punctuation. When off, only basic local formatting is applied.</source>
        <translation>Uses a language-model server on this computer to remove filler words and fix punctuation. When off, only basic local formatting is applied.</translation>
    </message>
    <message>
        <source>Actively trims filler, redundancy, and hedging instead of just lightly cleaning up your wording. Off by default since it rewrites more than Talmo normally does.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rewrites dictation to match the selected tone. Combinable with Concise text above. &quot;Standard&quot; makes no tone change.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Standard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Professional</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Friendly</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Polite</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Push-to-talk</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cleanup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable AI cleanup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Concise text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Say it and it happens — like traditional dictation software:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;...as bullet points&quot; → formats as a bullet list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;...new paragraph...&quot; → starts a new paragraph</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;...new line...&quot; → starts a new line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Startup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Microphone access needed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speech recognition access needed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Accessibility access needed</source>
        <translation>Talmo cannot type into other windows</translation>
    </message>
    <message>
        <source>Talmo needs permissions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo is ready</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hold %1, or double-tap for hands-free</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Listening…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cleaning up…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inserting…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Grant Permissions…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>⌘,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>Quit Talmo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo has no backend, no account, and no network functionality. Recording, transcription, and text cleanup all run using Apple&apos;s on-device Speech and Foundation Models frameworks. Nothing you say or type is sent anywhere.</source>
        <translation>Talmo has no backend and no account. Recording and transcription run on this computer. With AI cleanup on, the text is sent to a language-model server on this computer, if one is running, and nowhere else. Talmo itself uses the internet only for the one-time download of a speech model.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speech Recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Typing into other windows</translation>
    </message>
    <message>
        <source>Audio and transcripts are processed locally on this Mac.</source>
        <translation>Audio and transcripts are processed locally on this computer.</translation>
    </message>
    <message>
        <source>Open Settings…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Granted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not granted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Listening</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>General</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Automatic (best installed)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This model is not installed; another one is used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recogniser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Model</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Licence: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Still working on the last sentence</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speech recognition stopped responding. Copy Last Dictation in the menu has what was heard until then.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The cursor is in a password field, so nothing was pasted. Choose “Copy Last Dictation” from the icon&apos;s menu.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo does not paste if the application in front reports that the cursor is in a password field. Requires the desktop&apos;s accessibility service.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Protect password fields</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your text is sent to %1 at %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>While this is off, no text is sent to %1 at %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another user&apos;s program is listening at %1. Your text is not sent to it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The settings could not be saved. Is the disk full?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The sound server is not responding. Try again in a moment.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection to the sound server was lost. Try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The operation was cancelled.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing has been dictated yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The text is too long.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The request took too long to arrive.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown request.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no earlier clipboard to restore.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo did not respond.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The window is not responding. The text is on the clipboard and will be inserted when the window recovers.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No window has keyboard focus. The text is on the clipboard: paste it with %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program has grabbed the keyboard. The text is on the clipboard: paste it with %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This keyboard layout has no key for pasting. The text is on the clipboard: paste it from a menu.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The active window changed. The text is on the clipboard: paste it with %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program replaced the clipboard. Choose “Copy Last Dictation” from the icon&apos;s menu.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No window accepted the text. It is on the clipboard: paste it with %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>disabled in the settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no model server is running on this machine</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not checked yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the clipboard was lost: it held more than Talmo can keep. Copy it again if you need it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Part of the clipboard was lost: its application did not provide it in time. Copy it again if you need it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The built-in speech model is damaged. Reinstall the package pocketsphinx-en-us.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection timed out.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Verifying</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Testing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo cannot write to its folder for models. Check the folder&apos;s permissions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another model is being installed or removed. Try again when that has finished.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server cannot resume this download; starting over.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server resumed at the wrong offset.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server sent more data than announced.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The connection closed before the download was complete.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The speech model isn&apos;t installed. Install the package pocketsphinx-en-us.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This speech model can no longer be used. Install it again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy Last Dictation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore Earlier Clipboard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Editing took longer than %1 seconds three times. A smaller model is faster, for example %2 (%3 MB, %4).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Editing took longer than %1 seconds three times. It is faster with a smaller model, or with AI cleanup turned off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: stop · Esc: discard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Esc: discard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause Talmo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resume Talmo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo is paused</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The key does nothing until you resume</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dictating</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Space between dictations</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Puts a space before a dictation that continues the last one: in the same window, with no key or click in between.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sounds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Plays a sound of the desktop when a recording starts, when it ends and when something goes wrong.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each is heard as well as written your way. If one is misheard, select it and write what it sounds like.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Each is heard as well as written your way.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sounds like</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Used by the built-in recogniser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Needs AI cleanup with a language model. Without one, these words are left out and no list is made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The last 50, in memory only: they are gone when Talmo ends or you switch this off. Nothing is kept that went into a field which reports itself as a password field.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep a list of dictations</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dictations</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import Words</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Words</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This file could not be read as text. Choose a text file with one word per line.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New words: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The words could not be saved there. Choose another folder, or free some disk space.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Words saved: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, sounds like %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Licences: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo cannot use models of this kind: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>These models need the library of sherpa-onnx, which is not where the settings say, or does not exist for this computer. Remove linux.neuralLibrary from Talmo&apos;s settings file to have it downloaded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server cannot be reached. Check the network connection, then try again; the download goes on where it stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file on the server is not the one that Talmo knows; its maker has probably renewed it. Update Talmo, or accept the new file with this command: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This model is too slow for this computer: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This model needs a newer library than the installed one. Install the model again, and the library comes with it: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installing a recogniser…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Get better recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+Shift+V</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shift+Insert</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ctrl+V</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left Ctrl</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right Ctrl</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left Shift</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right Shift</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left Alt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right Alt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>AltGr</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left Super</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right Super</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Caps Lock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scroll Lock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Num Lock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Menu</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print Screen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fn</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied: press %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dictation key</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop may not tell Talmo about keys while a Wayland window is in front.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bind a key to “talmoctl toggle” in the desktop&apos;s keyboard settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inserting text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop does not let Talmo type into Wayland windows.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>After a dictation, paste the text with Ctrl+V.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop&apos;s sound server is not running. Start PipeWire or PulseAudio, or log in again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The microphone “%1” gives only silence. Is it muted?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The microphone “%1” was unplugged. Plug it in again, or choose another one in Talmo&apos;s settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The settings file names a key “%1”, which does not exist. Press the key you want instead.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” types text, so it cannot be held. Choose a key that types nothing, such as F9.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Your keyboard layout has no key “%1”. Press the key you want instead.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program uses “%1” as well, and reacts to it too. Choose another key, or change that program.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The keyboard layout has no name for this key. Press another one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System language (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dictating in %1 needs another recogniser.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System default</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>System default (%1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The sound server does not let Talmo record. Check the desktop&apos;s privacy settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No microphone was found. Plug one in, or enable one in the desktop&apos;s sound settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is not connected. Until it is, the system&apos;s default microphone is used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Microphone unplugged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is not connected. Talmo records from the system&apos;s default microphone instead.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo is running. This desktop has no place for its icon: start Talmo again to open its settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is not installed. Install the recogniser in Talmo&apos;s settings, or with “talmoctl setup”.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library cannot be loaded. Install the recogniser again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A key such as F9 no longer reaches other programs, except together with Ctrl, Alt, Shift or Super. A modifier such as Right Ctrl keeps working in them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Press the key now. Esc leaves it as it is.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Press a key…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Press the key you want</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add another</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No %1 on your keyboard?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Language</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dictate in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set it up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use English for now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Microphone level</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo listens only while you dictate or test the microphone.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Say something: the bar moves. Talmo listens while this page is open, and later only while you dictate.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record from</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Welcome to Talmo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hold %1, speak, and let go: your words are typed where the cursor is, in any program. Tap the key twice to dictate hands-free. Nothing that you say leaves this computer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Starting Talmo again opens its settings. So does its microphone icon, if your panel has a place for it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The key to hold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hold this key to speak</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A field to try it in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recognition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Click here, hold %1 and say: This is my first dictation.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop does not let Talmo type into other programs.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GNOME lets Talmo hear its key and paste only with the help of an extension, which comes with Talmo and does nothing else.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is enabled. Log out and in once to start it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is enabled.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GNOME&apos;s extensions are switched off. Switch them on in the Extensions application, then enable Talmo&apos;s here.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GNOME could not start Talmo&apos;s extension. Update Talmo, then log out and in once.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enable the extension</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hold to dictate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program&apos;s shortcut is the dictation key already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove that shortcut in KDE&apos;s settings, then start Talmo again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>recommended</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Built in, to begin with (English)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Details in the menu</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speech is recognised on this computer whichever recogniser you choose; the network is used only to download models.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Inserted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recommended</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None until you pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The model for the live text is not installed; text appears when you pause.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Live text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Final text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The live text is shown while you speak. The final text replaces it and is inserted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop did not allow it for good. Switch this off and on again, and allow it in the dialog for later sessions too.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop did not give Talmo a dictation key. Ask again in the settings, under Privacy, or bind a key to “talmoctl toggle” in the desktop&apos;s keyboard settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ask for the key again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop asks which key starts dictation.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The desktop&apos;s key for dictation: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This desktop lets Talmo type into Wayland windows only if you allow it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Allow it in the settings, under Privacy. Until then, paste the text with Ctrl+V.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paste with the desktop&apos;s remote control</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lets Talmo press the paste shortcut in Wayland windows. The desktop may ask once, and may show that it is controlled while Talmo pastes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is missing, so the key works in only a few programs. Reinstall the Talmo package.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This speech model is for a recogniser that Talmo does not have. Update Talmo, or choose another one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A speech model could not be tested. Try again when the computer is less busy.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The downloaded file cannot be used. Try again; if it fails again, choose another recogniser.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The download cannot be unpacked. Free some space on the disk, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The downloaded file cannot be read. Try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The download cannot be saved. Free some space on the disk, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The model “%1” is not installed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is a link to a model stored elsewhere. Delete the link in the folder for models yourself.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Some files of the model “%1” could not be deleted. Check the permissions of the folder for models.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server cannot be trusted. Check this computer&apos;s date and network, then try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server does not deliver this file at present. Try again later.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is not enough space on the disk. Free some, then try again. Needed: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>“%1” is still being installed. Wait for it to finish, or cancel it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Speech recognition failed. Try again; if it fails again, choose another recogniser in the settings.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The speech-detection model that this speech model needs is missing. Reinstall this model to get both.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is incomplete. Install the recogniser again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is of a version that models of this kind do not work with. Install the model again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is too old. Install the recogniser again to get a newer one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is newer than this version of Talmo knows. Update Talmo, or install the recogniser again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This speech model cannot be used. Install it again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
