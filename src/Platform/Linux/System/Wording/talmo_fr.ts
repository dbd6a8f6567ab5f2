<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>Talmo</name>
    <message>
        <source>Grant microphone and speech-recognition permissions first.</source>
        <translation>Accordez d’abord les autorisations pour le microphone et la reconnaissance vocale.</translation>
    </message>
    <message>
        <source>No speech detected.</source>
        <translation>Aucune parole détectée.</translation>
    </message>
    <message>
        <source>An unknown error occurred.</source>
        <translation>Une erreur inconnue s’est produite.</translation>
    </message>
    <message>
        <source>This Mac doesn&apos;t support Apple Intelligence.</source>
        <translation>Le modèle de langue est désactivé dans le fichier de configuration de Talmo.</translation>
    </message>
    <message>
        <source>Apple Intelligence isn&apos;t turned on. Enable it in System Settings &gt; Apple Intelligence &amp; Siri to use AI cleanup.</source>
        <translation>Aucun modèle de langue ne fonctionne sur cet ordinateur. Démarrez-en un, par exemple le serveur de llama.cpp ou Ollama, pour utiliser la correction par IA.</translation>
    </message>
    <message>
        <source>The on-device language model is still preparing. Try again shortly.</source>
        <translation>Le modèle de langue local est encore en préparation. Réessayez dans un instant.</translation>
    </message>
    <message>
        <source>The on-device language model isn&apos;t available right now.</source>
        <translation>Le modèle de langue local n’est pas disponible pour le moment.</translation>
    </message>
    <message>
        <source>Couldn&apos;t set up microphone capture: </source>
        <translation>Impossible de préparer la capture du microphone&#xa0;: </translation>
    </message>
    <message>
        <source>Couldn&apos;t start audio capture: </source>
        <translation>Impossible de démarrer la capture audio&#xa0;: </translation>
    </message>
    <message>
        <source>No microphone input is available.</source>
        <translation>Aucune entrée de microphone n’est disponible.</translation>
    </message>
    <message>
        <source>Talmo needs Accessibility access (System Settings &gt; Privacy &amp; Security &gt; Accessibility) to insert text into other apps.</source>
        <translation>Talmo a besoin d’un serveur X avec les extensions XTEST et XInput 2.2 pour insérer du texte dans d’autres applications.</translation>
    </message>
    <message>
        <source>Nothing to insert.</source>
        <translation>Rien à insérer.</translation>
    </message>
    <message>
        <source>On-device speech recognition isn&apos;t available on this Mac.</source>
        <translation>La reconnaissance vocale locale n’est pas disponible sur cet ordinateur.</translation>
    </message>
    <message>
        <source>The current language isn&apos;t supported for on-device transcription.</source>
        <translation>La langue actuelle n’est pas prise en charge par la transcription locale.</translation>
    </message>
    <message>
        <source>The on-device speech model for this language isn&apos;t installed yet. Installing it once requires an internet connection; after that, transcription works fully offline.</source>
        <translation>Le modèle vocal local pour cette langue n’est pas encore installé. Seule l’installation nécessite une connexion Internet&#xa0;; ensuite, la transcription fonctionne entièrement hors ligne.</translation>
    </message>
    <message>
        <source>Couldn&apos;t find a compatible audio format for the microphone and speech recognizer.</source>
        <translation>Aucun format audio compatible avec le microphone et la reconnaissance vocale n’a été trouvé.</translation>
    </message>
    <message>
        <source>Not currently recording.</source>
        <translation>Aucun enregistrement en cours.</translation>
    </message>
    <message>
        <source>Words and phrases you add here are passed to the cleanup step as context so they&apos;re preserved exactly, instead of being &quot;corrected&quot; away.</source>
        <translation>Les mots et expressions ajoutés ici sont transmis à l’étape de correction comme contexte, afin d’être conservés tels quels au lieu d’être «&#xa0;corrigés&#xa0;».</translation>
    </message>
    <message>
        <source>Add a word or phrase</source>
        <translation>Ajouter un mot ou une expression</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message>
        <source>Dictionary</source>
        <translation>Dictionnaire</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Hold fn to record and release to insert, or double-tap fn for hands-free recording (press fn again to stop). Works even when Talmo isn&apos;t the frontmost app. Requires &quot;Press 🌐 key to: Do Nothing&quot; in System Settings &gt; Keyboard, so macOS&apos;s own Globe-key action doesn&apos;t also fire. Not yet configurable in this MVP.</source>
        <translation>Maintenez %1 pour enregistrer et relâchez pour insérer, ou appuyez deux fois sur %1 pour enregistrer en mains libres (appuyez de nouveau sur %1 pour arrêter). Fonctionne même si Talmo n’est pas au premier plan. Vous pouvez choisir d’autres touches ci-dessous.</translation>
    </message>
    <message>
        <source>Uses Apple&apos;s on-device Foundation Models to remove filler words and fix punctuation. When off, only basic local formatting is applied.</source>
        <translation>Supprime les mots de remplissage et corrige la ponctuation à l’aide d’un serveur de modèle de langue sur cet ordinateur. Si cette option est désactivée, seule une mise en forme locale simple est appliquée.</translation>
    </message>
    <message>
        <source>Actively trims filler, redundancy, and hedging instead of just lightly cleaning up your wording. Off by default since it rewrites more than Talmo normally does.</source>
        <translation>Élimine activement le remplissage, les redondances et les précautions oratoires, au lieu de n’effectuer qu’une légère correction. Désactivé par défaut, car le texte est davantage réécrit que d’habitude.</translation>
    </message>
    <message>
        <source>Rewrites dictation to match the selected tone. Combinable with Concise text above. &quot;Standard&quot; makes no tone change.</source>
        <translation>Réécrit la dictée dans le ton choisi. Peut être combiné avec «&#xa0;Texte concis&#xa0;» ci-dessus. «&#xa0;Standard&#xa0;» ne change pas le ton.</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>Professional</source>
        <translation>Professionnel</translation>
    </message>
    <message>
        <source>Friendly</source>
        <translation>Amical</translation>
    </message>
    <message>
        <source>Polite</source>
        <translation>Poli</translation>
    </message>
    <message>
        <source>Push-to-talk</source>
        <translation>Appuyer pour parler</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Raccourci</translation>
    </message>
    <message>
        <source>Cleanup</source>
        <translation>Correction</translation>
    </message>
    <message>
        <source>Enable AI cleanup</source>
        <translation>Activer la correction par IA</translation>
    </message>
    <message>
        <source>Concise text</source>
        <translation>Texte concis</translation>
    </message>
    <message>
        <source>Tone</source>
        <translation>Ton</translation>
    </message>
    <message>
        <source>Say it and it happens — like traditional dictation software:</source>
        <translation>Dites-le et c’est fait – comme avec un logiciel de dictée classique (en anglais seulement)&#xa0;:</translation>
    </message>
    <message>
        <source>&quot;...as bullet points&quot; → formats as a bullet list</source>
        <translation>«&#xa0;... as bullet points&#xa0;» → met en forme une liste à puces</translation>
    </message>
    <message>
        <source>&quot;...new paragraph...&quot; → starts a new paragraph</source>
        <translation>«&#xa0;... new paragraph ...&#xa0;» → commence un nouveau paragraphe</translation>
    </message>
    <message>
        <source>&quot;...new line...&quot; → starts a new line</source>
        <translation>«&#xa0;... new line ...&#xa0;» → commence une nouvelle ligne</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Démarrage</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Lancer à l’ouverture de session</translation>
    </message>
    <message>
        <source>Talmo</source>
        <translation>Talmo</translation>
    </message>
    <message>
        <source>Start Recording</source>
        <translation>Démarrer l’enregistrement</translation>
    </message>
    <message>
        <source>Microphone access needed</source>
        <translation>Accès au microphone requis</translation>
    </message>
    <message>
        <source>Speech recognition access needed</source>
        <translation>Accès à la reconnaissance vocale requis</translation>
    </message>
    <message>
        <source>Accessibility access needed</source>
        <translation>Talmo ne peut pas écrire dans les autres fenêtres</translation>
    </message>
    <message>
        <source>Talmo needs permissions</source>
        <translation>Talmo a besoin d’autorisations</translation>
    </message>
    <message>
        <source>Talmo is ready</source>
        <translation>Talmo est prêt</translation>
    </message>
    <message>
        <source>Hold %1, or double-tap for hands-free</source>
        <translation>Maintenez %1, ou deux appuis pour les mains libres</translation>
    </message>
    <message>
        <source>Listening…</source>
        <translation>Écoute…</translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation>Arrêter l’enregistrement</translation>
    </message>
    <message>
        <source>Cleaning up…</source>
        <translation>Correction…</translation>
    </message>
    <message>
        <source>Inserting…</source>
        <translation>Insertion…</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>Un problème est survenu</translation>
    </message>
    <message>
        <source>Grant Permissions…</source>
        <translation>Accorder les autorisations…</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Paramètres</translation>
    </message>
    <message>
        <source>⌘,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>Quit Talmo</source>
        <translation>Quitter Talmo</translation>
    </message>
    <message>
        <source>Talmo has no backend, no account, and no network functionality. Recording, transcription, and text cleanup all run using Apple&apos;s on-device Speech and Foundation Models frameworks. Nothing you say or type is sent anywhere.</source>
        <translation>Talmo n’a ni serveur ni compte. L’enregistrement et la transcription ont lieu sur cet ordinateur. Lorsque la correction par IA est activée, le texte est envoyé à un serveur de modèle de langue sur cet ordinateur, s’il y en a un, et nulle part ailleurs. Talmo lui-même n’utilise Internet que pour télécharger une seule fois un modèle vocal.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Microphone</translation>
    </message>
    <message>
        <source>Speech Recognition</source>
        <translation>Reconnaissance vocale</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Saisie dans les autres fenêtres</translation>
    </message>
    <message>
        <source>Audio and transcripts are processed locally on this Mac.</source>
        <translation>Le son et les transcriptions sont traités localement sur cet ordinateur.</translation>
    </message>
    <message>
        <source>Open Settings…</source>
        <translation>Ouvrir les paramètres…</translation>
    </message>
    <message>
        <source>Granted</source>
        <translation>Accordé</translation>
    </message>
    <message>
        <source>Not granted</source>
        <translation>Non accordé</translation>
    </message>
    <message>
        <source>Listening</source>
        <translation>Écoute</translation>
    </message>
    <message>
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Confidentialité</translation>
    </message>
    <message>
        <source>Talmo Settings</source>
        <translation>Paramètres de Talmo</translation>
    </message>
    <message>
        <source>Automatic (best installed)</source>
        <translation>Automatique (le meilleur installé)</translation>
    </message>
    <message>
        <source>This model is not installed; another one is used.</source>
        <translation>Ce modèle n’est pas installé&#xa0;; un autre est utilisé.</translation>
    </message>
    <message>
        <source>Recogniser</source>
        <translation>Moteur de reconnaissance</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modèle</translation>
    </message>
    <message>
        <source>Installation</source>
        <translation>Installation</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installer</translation>
    </message>
    <message>
        <source>Licence: %1</source>
        <translation>Licence&#xa0;: %1</translation>
    </message>
    <message>
        <source>Still working on the last sentence</source>
        <translation>La dernière phrase est encore en cours de traitement</translation>
    </message>
    <message>
        <source>Speech recognition stopped responding. Copy Last Dictation in the menu has what was heard until then.</source>
        <translation>La reconnaissance vocale ne répond plus. «&#xa0;Copier la dernière dictée&#xa0;» dans le menu contient ce qui a été entendu jusque-là.</translation>
    </message>
    <message>
        <source>The cursor is in a password field, so nothing was pasted. Choose “Copy Last Dictation” from the icon&apos;s menu.</source>
        <translation>Le curseur se trouve dans un champ de mot de passe&#xa0;; rien n’a donc été collé. Choisissez «&#xa0;Copier la dernière dictée&#xa0;» dans le menu de l’icône.</translation>
    </message>
    <message>
        <source>Talmo does not paste if the application in front reports that the cursor is in a password field. Requires the desktop&apos;s accessibility service.</source>
        <translation>Talmo ne colle rien si l’application au premier plan signale que le curseur se trouve dans un champ de mot de passe. Nécessite le service d’accessibilité de l’environnement de bureau.</translation>
    </message>
    <message>
        <source>Protect password fields</source>
        <translation>Protéger les champs de mot de passe</translation>
    </message>
    <message>
        <source>Your text is sent to %1 at %2.</source>
        <translation>Votre texte est envoyé à %1 à l’adresse %2.</translation>
    </message>
    <message>
        <source>While this is off, no text is sent to %1 at %2.</source>
        <translation>Tant que cette option est désactivée, aucun texte n’est envoyé à %1 à l’adresse %2.</translation>
    </message>
    <message>
        <source>Another user&apos;s program is listening at %1. Your text is not sent to it.</source>
        <translation>Le programme d’un autre utilisateur écoute à l’adresse %1. Votre texte ne lui est pas envoyé.</translation>
    </message>
    <message>
        <source>The settings could not be saved. Is the disk full?</source>
        <translation>Les paramètres n’ont pas pu être enregistrés. Le disque est-il plein&#xa0;?</translation>
    </message>
    <message>
        <source>The sound server is not responding. Try again in a moment.</source>
        <translation>Le serveur de son ne répond pas. Réessayez dans un instant.</translation>
    </message>
    <message>
        <source>The connection to the sound server was lost. Try again.</source>
        <translation>La connexion au serveur de son a été perdue. Réessayez.</translation>
    </message>
    <message>
        <source>The operation was cancelled.</source>
        <translation>L’opération a été annulée.</translation>
    </message>
    <message>
        <source>Nothing has been dictated yet.</source>
        <translation>Rien n’a encore été dicté.</translation>
    </message>
    <message>
        <source>The text is too long.</source>
        <translation>Le texte est trop long.</translation>
    </message>
    <message>
        <source>The request took too long to arrive.</source>
        <translation>La requête a mis trop de temps à arriver.</translation>
    </message>
    <message>
        <source>Unknown request.</source>
        <translation>Requête inconnue.</translation>
    </message>
    <message>
        <source>There is no earlier clipboard to restore.</source>
        <translation>Il n’y a pas de presse-papiers antérieur à restaurer.</translation>
    </message>
    <message>
        <source>Talmo did not respond.</source>
        <translation>Talmo n’a pas répondu.</translation>
    </message>
    <message>
        <source>The window is not responding. The text is on the clipboard and will be inserted when the window recovers.</source>
        <translation>La fenêtre ne répond pas. Le texte est dans le presse-papiers et sera inséré dès que la fenêtre répondra.</translation>
    </message>
    <message>
        <source>No window has keyboard focus. The text is on the clipboard: paste it with %1.</source>
        <translation>Aucune fenêtre n’a le focus du clavier. Le texte est dans le presse-papiers&#xa0;: collez-le avec %1.</translation>
    </message>
    <message>
        <source>Another program has grabbed the keyboard. The text is on the clipboard: paste it with %1.</source>
        <translation>Un autre programme a capturé le clavier. Le texte est dans le presse-papiers&#xa0;: collez-le avec %1.</translation>
    </message>
    <message>
        <source>This keyboard layout has no key for pasting. The text is on the clipboard: paste it from a menu.</source>
        <translation>Cette disposition de clavier n’a pas de touche pour coller. Le texte est dans le presse-papiers&#xa0;: collez-le depuis un menu.</translation>
    </message>
    <message>
        <source>The active window changed. The text is on the clipboard: paste it with %1.</source>
        <translation>La fenêtre active a changé. Le texte est dans le presse-papiers&#xa0;: collez-le avec %1.</translation>
    </message>
    <message>
        <source>Another program replaced the clipboard. Choose “Copy Last Dictation” from the icon&apos;s menu.</source>
        <translation>Un autre programme a remplacé le presse-papiers. Choisissez «&#xa0;Copier la dernière dictée&#xa0;» dans le menu de l’icône.</translation>
    </message>
    <message>
        <source>No window accepted the text. It is on the clipboard: paste it with %1.</source>
        <translation>Aucune fenêtre n’a accepté le texte. Il est dans le presse-papiers&#xa0;: collez-le avec %1.</translation>
    </message>
    <message>
        <source>disabled in the settings</source>
        <translation>désactivé dans les paramètres</translation>
    </message>
    <message>
        <source>no model server is running on this machine</source>
        <translation>aucun serveur de modèle ne fonctionne sur cet ordinateur</translation>
    </message>
    <message>
        <source>not checked yet</source>
        <translation>pas encore vérifié</translation>
    </message>
    <message>
        <source>Part of the clipboard was lost: it held more than Talmo can keep. Copy it again if you need it.</source>
        <translation>Une partie du presse-papiers a été perdue&#xa0;: il contenait plus que Talmo ne peut conserver. Copiez-le de nouveau si nécessaire.</translation>
    </message>
    <message>
        <source>Part of the clipboard was lost: its application did not provide it in time. Copy it again if you need it.</source>
        <translation>Une partie du presse-papiers a été perdue&#xa0;: son application ne l’a pas fournie à temps. Copiez-le de nouveau si nécessaire.</translation>
    </message>
    <message>
        <source>The built-in speech model is damaged. Reinstall the package pocketsphinx-en-us.</source>
        <translation>Le modèle vocal intégré est endommagé. Réinstallez le paquet pocketsphinx-en-us.</translation>
    </message>
    <message>
        <source>The connection timed out.</source>
        <translation>Le délai de connexion a expiré.</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Téléchargement&#xa0;: </translation>
    </message>
    <message>
        <source>Verifying</source>
        <translation>Vérification</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>Décompression</translation>
    </message>
    <message>
        <source>Testing</source>
        <translation>Test en cours</translation>
    </message>
    <message>
        <source>Talmo cannot write to its folder for models. Check the folder&apos;s permissions.</source>
        <translation>Talmo ne peut pas écrire dans son dossier de modèles. Vérifiez les droits d’accès de ce dossier.</translation>
    </message>
    <message>
        <source>Another model is being installed or removed. Try again when that has finished.</source>
        <translation>Un autre modèle est en cours d’installation ou de suppression. Réessayez ensuite.</translation>
    </message>
    <message>
        <source>The server cannot resume this download; starting over.</source>
        <translation>Le serveur ne peut pas reprendre ce téléchargement&#xa0;; il recommence depuis le début.</translation>
    </message>
    <message>
        <source>The server resumed at the wrong offset.</source>
        <translation>Le serveur a repris au mauvais endroit.</translation>
    </message>
    <message>
        <source>The server sent more data than announced.</source>
        <translation>Le serveur a envoyé plus de données qu’annoncé.</translation>
    </message>
    <message>
        <source>The connection closed before the download was complete.</source>
        <translation>La connexion s’est fermée avant la fin du téléchargement.</translation>
    </message>
    <message>
        <source>The speech model isn&apos;t installed. Install the package pocketsphinx-en-us.</source>
        <translation>Le modèle vocal n’est pas installé. Installez le paquet pocketsphinx-en-us.</translation>
    </message>
    <message>
        <source>This speech model can no longer be used. Install it again.</source>
        <translation>Ce modèle vocal n’est plus utilisable. Installez-le de nouveau.</translation>
    </message>
    <message>
        <source>Copy Last Dictation</source>
        <translation>Copier la dernière dictée</translation>
    </message>
    <message>
        <source>Restore Earlier Clipboard</source>
        <translation>Restaurer le presse-papiers antérieur</translation>
    </message>
    <message>
        <source>Editing took longer than %1 seconds three times. A smaller model is faster, for example %2 (%3 MB, %4).</source>
        <translation>À trois reprises, la correction a pris plus de %1 secondes. Un modèle plus petit est plus rapide, par exemple %2 (%3 Mo, %4).</translation>
    </message>
    <message>
        <source>Editing took longer than %1 seconds three times. It is faster with a smaller model, or with AI cleanup turned off.</source>
        <translation>À trois reprises, la correction a pris plus de %1 secondes. Elle est plus rapide avec un modèle plus petit, ou inutile si la correction par IA est désactivée.</translation>
    </message>
    <message>
        <source>%1: stop · Esc: discard</source>
        <translation>%1&#xa0;: arrêter · Échap&#xa0;: abandonner</translation>
    </message>
    <message>
        <source>%1: stop</source>
        <translation>%1&#xa0;: arrêter</translation>
    </message>
    <message>
        <source>Esc: discard</source>
        <translation>Échap&#xa0;: abandonner</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Annulé</translation>
    </message>
    <message>
        <source>Pause Talmo</source>
        <translation>Suspendre Talmo</translation>
    </message>
    <message>
        <source>Resume Talmo</source>
        <translation>Reprendre Talmo</translation>
    </message>
    <message>
        <source>Talmo is paused</source>
        <translation>Talmo est suspendu</translation>
    </message>
    <message>
        <source>The key does nothing until you resume</source>
        <translation>La touche reste sans effet jusqu’à la reprise</translation>
    </message>
    <message>
        <source>Dictating</source>
        <translation>Dictée</translation>
    </message>
    <message>
        <source>Space between dictations</source>
        <translation>Espace entre les dictées</translation>
    </message>
    <message>
        <source>Puts a space before a dictation that continues the last one: in the same window, with no key or click in between.</source>
        <translation>Ajoute une espace avant une dictée qui poursuit la précédente&#xa0;: dans la même fenêtre, sans touche ni clic entre les deux.</translation>
    </message>
    <message>
        <source>Sounds</source>
        <translation>Sons</translation>
    </message>
    <message>
        <source>Plays a sound of the desktop when a recording starts, when it ends and when something goes wrong.</source>
        <translation>Joue un son de l’environnement de bureau au début et à la fin d’un enregistrement, et en cas d’erreur.</translation>
    </message>
    <message>
        <source>Each is heard as well as written your way. If one is misheard, select it and write what it sounds like.</source>
        <translation>Chacun est entendu, et pas seulement écrit, à votre manière. Si l’un d’eux est mal compris, sélectionnez-le et indiquez comment il se prononce.</translation>
    </message>
    <message>
        <source>Each is heard as well as written your way.</source>
        <translation>Chacun est entendu, et pas seulement écrit, à votre manière.</translation>
    </message>
    <message>
        <source>Sounds like</source>
        <translation>Se prononce comme</translation>
    </message>
    <message>
        <source>Used by the built-in recogniser</source>
        <translation>Utilisé par le moteur intégré</translation>
    </message>
    <message>
        <source>Needs AI cleanup with a language model. Without one, these words are left out and no list is made.</source>
        <translation>Nécessite la correction par IA avec un modèle de langue. Sans modèle, ces mots sont omis et aucune liste n’est créée.</translation>
    </message>
    <message>
        <source>The last 50, in memory only: they are gone when Talmo ends or you switch this off. Nothing is kept that went into a field which reports itself as a password field.</source>
        <translation>Les 50 dernières, en mémoire seulement&#xa0;: elles disparaissent quand Talmo se ferme ou que vous désactivez cette option. Rien n’est conservé de ce qui est allé dans un champ qui se déclare comme champ de mot de passe.</translation>
    </message>
    <message>
        <source>Keep a list of dictations</source>
        <translation>Conserver une liste des dictées</translation>
    </message>
    <message>
        <source>Dictations</source>
        <translation>Dictées</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copier</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>Fichiers texte (*.txt);;Tous les fichiers (*)</translation>
    </message>
    <message>
        <source>Import…</source>
        <translation>Importer…</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exporter…</translation>
    </message>
    <message>
        <source>Import Words</source>
        <translation>Importer des mots</translation>
    </message>
    <message>
        <source>Export Words</source>
        <translation>Exporter des mots</translation>
    </message>
    <message>
        <source>This file could not be read as text. Choose a text file with one word per line.</source>
        <translation>Ce fichier n’a pas pu être lu comme du texte. Choisissez un fichier texte avec un mot par ligne.</translation>
    </message>
    <message>
        <source>New words: %1</source>
        <translation>Nouveaux mots&#xa0;: %1</translation>
    </message>
    <message>
        <source>The words could not be saved there. Choose another folder, or free some disk space.</source>
        <translation>Les mots n’ont pas pu être enregistrés à cet endroit. Choisissez un autre dossier ou libérez de l’espace disque.</translation>
    </message>
    <message>
        <source>Words saved: %1</source>
        <translation>Mots enregistrés&#xa0;: %1</translation>
    </message>
    <message>
        <source>%1, sounds like %2</source>
        <translation>%1, se prononce comme %2</translation>
    </message>
    <message>
        <source>Licences: %1</source>
        <translation>Licences&#xa0;: %1</translation>
    </message>
    <message>
        <source>Talmo cannot use models of this kind: </source>
        <translation>Talmo ne peut pas utiliser les modèles de ce type&#xa0;: </translation>
    </message>
    <message>
        <source>These models need the library of sherpa-onnx, which is not where the settings say, or does not exist for this computer. Remove linux.neuralLibrary from Talmo&apos;s settings file to have it downloaded.</source>
        <translation>Ces modèles nécessitent la bibliothèque de sherpa-onnx, qui ne se trouve pas à l’endroit indiqué dans les paramètres ou n’existe pas pour cet ordinateur. Supprimez linux.neuralLibrary du fichier de configuration de Talmo pour qu’elle soit téléchargée.</translation>
    </message>
    <message>
        <source>The server cannot be reached. Check the network connection, then try again; the download goes on where it stopped.</source>
        <translation>Le serveur est injoignable. Vérifiez la connexion réseau, puis réessayez&#xa0;; le téléchargement reprendra là où il s’est arrêté.</translation>
    </message>
    <message>
        <source>The file on the server is not the one that Talmo knows; its maker has probably renewed it. Update Talmo, or accept the new file with this command: </source>
        <translation>Le fichier présent sur le serveur n’est pas celui que Talmo connaît&#xa0;; son auteur l’a probablement renouvelé. Mettez Talmo à jour, ou acceptez le nouveau fichier avec cette commande&#xa0;: </translation>
    </message>
    <message>
        <source>This model is too slow for this computer: </source>
        <translation>Ce modèle est trop lent pour cet ordinateur&#xa0;: </translation>
    </message>
    <message>
        <source>This model needs a newer library than the installed one. Install the model again, and the library comes with it: </source>
        <translation>Ce modèle nécessite une bibliothèque plus récente que celle installée. Installez de nouveau le modèle&#xa0;; la bibliothèque sera installée avec lui&#xa0;: </translation>
    </message>
    <message>
        <source>Installing a recogniser…</source>
        <translation>Installation d’un moteur de reconnaissance…</translation>
    </message>
    <message>
        <source>Get better recognition</source>
        <translation>Obtenir une meilleure reconnaissance</translation>
    </message>
    <message>
        <source>Ctrl+Shift+V</source>
        <translation>Ctrl+Maj+V</translation>
    </message>
    <message>
        <source>Shift+Insert</source>
        <translation>Maj+Inser</translation>
    </message>
    <message>
        <source>Ctrl+V</source>
        <translation>Ctrl+V</translation>
    </message>
    <message>
        <source>Left Ctrl</source>
        <translation>Ctrl gauche</translation>
    </message>
    <message>
        <source>Right Ctrl</source>
        <translation>Ctrl droite</translation>
    </message>
    <message>
        <source>Left Shift</source>
        <translation>Maj gauche</translation>
    </message>
    <message>
        <source>Right Shift</source>
        <translation>Maj droite</translation>
    </message>
    <message>
        <source>Left Alt</source>
        <translation>Alt gauche</translation>
    </message>
    <message>
        <source>Right Alt</source>
        <translation>Alt droite</translation>
    </message>
    <message>
        <source>AltGr</source>
        <translation>AltGr</translation>
    </message>
    <message>
        <source>Left Super</source>
        <translation>Super gauche</translation>
    </message>
    <message>
        <source>Right Super</source>
        <translation>Super droite</translation>
    </message>
    <message>
        <source>Caps Lock</source>
        <translation>Verr. maj.</translation>
    </message>
    <message>
        <source>Scroll Lock</source>
        <translation>Arrêt défil.</translation>
    </message>
    <message>
        <source>Num Lock</source>
        <translation>Verr. num.</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Print Screen</source>
        <translation>Impr. écran</translation>
    </message>
    <message>
        <source>Fn</source>
        <translation>Fn</translation>
    </message>
    <message>
        <source>Copied: press %1</source>
        <translation>Copié : appuyez sur %1</translation>
    </message>
    <message>
        <source>Dictation key</source>
        <translation>Touche de dictée</translation>
    </message>
    <message>
        <source>This desktop may not tell Talmo about keys while a Wayland window is in front.</source>
        <translation>Ce bureau n’informe peut-être pas Talmo des touches lorsqu’une fenêtre Wayland est au premier plan.</translation>
    </message>
    <message>
        <source>Bind a key to “talmoctl toggle” in the desktop&apos;s keyboard settings.</source>
        <translation>Associez une touche à « talmoctl toggle » dans les paramètres clavier du bureau.</translation>
    </message>
    <message>
        <source>Inserting text</source>
        <translation>Insertion du texte</translation>
    </message>
    <message>
        <source>This desktop does not let Talmo type into Wayland windows.</source>
        <translation>Ce bureau ne permet pas à Talmo d’écrire dans les fenêtres Wayland.</translation>
    </message>
    <message>
        <source>After a dictation, paste the text with Ctrl+V.</source>
        <translation>Après une dictée, collez le texte avec Ctrl+V.</translation>
    </message>
    <message>
        <source>The desktop&apos;s sound server is not running. Start PipeWire or PulseAudio, or log in again.</source>
        <translation>Le serveur de son de l’environnement de bureau ne fonctionne pas. Démarrez PipeWire ou PulseAudio, ou ouvrez une nouvelle session.</translation>
    </message>
    <message>
        <source>The microphone “%1” gives only silence. Is it muted?</source>
        <translation>Le microphone «&#xa0;%1&#xa0;» ne donne que du silence. Est-il en sourdine&#xa0;?</translation>
    </message>
    <message>
        <source>The microphone “%1” was unplugged. Plug it in again, or choose another one in Talmo&apos;s settings.</source>
        <translation>Le microphone «&#xa0;%1&#xa0;» a été débranché. Rebranchez-le ou choisissez-en un autre dans les paramètres de Talmo.</translation>
    </message>
    <message>
        <source>The settings file names a key “%1”, which does not exist. Press the key you want instead.</source>
        <translation>Le fichier de configuration désigne une touche «&#xa0;%1&#xa0;» qui n’existe pas. Appuyez plutôt sur la touche voulue.</translation>
    </message>
    <message>
        <source>“%1” types text, so it cannot be held. Choose a key that types nothing, such as F9.</source>
        <translation>«&#xa0;%1&#xa0;» saisit du texte et ne peut donc pas être maintenue. Choisissez une touche qui n’écrit rien, par exemple F9.</translation>
    </message>
    <message>
        <source>Your keyboard layout has no key “%1”. Press the key you want instead.</source>
        <translation>Votre disposition de clavier n’a pas de touche «&#xa0;%1&#xa0;». Appuyez plutôt sur la touche voulue.</translation>
    </message>
    <message>
        <source>Another program uses “%1” as well, and reacts to it too. Choose another key, or change that program.</source>
        <translation>Un autre programme utilise aussi «&#xa0;%1&#xa0;» et y réagit également. Choisissez une autre touche ou modifiez ce programme.</translation>
    </message>
    <message>
        <source>The keyboard layout has no name for this key. Press another one.</source>
        <translation>La disposition de clavier n’a pas de nom pour cette touche. Appuyez sur une autre.</translation>
    </message>
    <message>
        <source>System language (%1)</source>
        <translation>Langue du système (%1)</translation>
    </message>
    <message>
        <source>Dictating in %1 needs another recogniser.</source>
        <translation>Dicter dans cette langue (%1) nécessite un autre moteur de reconnaissance.</translation>
    </message>
    <message>
        <source>System default</source>
        <translation>Valeur par défaut du système</translation>
    </message>
    <message>
        <source>System default (%1)</source>
        <translation>Valeur par défaut du système (%1)</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <translation>%1 (non connecté)</translation>
    </message>
    <message>
        <source>The sound server does not let Talmo record. Check the desktop&apos;s privacy settings.</source>
        <translation>Le serveur de son ne laisse pas Talmo enregistrer. Vérifiez les paramètres de confidentialité de l’environnement de bureau.</translation>
    </message>
    <message>
        <source>No microphone was found. Plug one in, or enable one in the desktop&apos;s sound settings.</source>
        <translation>Aucun microphone n’a été trouvé. Branchez-en un ou activez-en un dans les paramètres de son de l’environnement de bureau.</translation>
    </message>
    <message>
        <source>“%1” is not connected. Until it is, the system&apos;s default microphone is used.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas connecté. En attendant, le microphone par défaut du système est utilisé.</translation>
    </message>
    <message>
        <source>Microphone unplugged</source>
        <translation>Microphone débranché</translation>
    </message>
    <message>
        <source>“%1” is not connected. Talmo records from the system&apos;s default microphone instead.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas connecté. Talmo enregistre à la place avec le microphone par défaut du système.</translation>
    </message>
    <message>
        <source>Talmo is running. This desktop has no place for its icon: start Talmo again to open its settings.</source>
        <translation>Talmo est lancé. Cet environnement de bureau n’a pas de place pour son icône&#xa0;: relancez Talmo pour ouvrir ses paramètres.</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Page préc.</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Page suiv.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is not installed. Install the recogniser in Talmo&apos;s settings, or with “talmoctl setup”.</source>
        <translation>La bibliothèque du moteur neuronal n’est pas installée. Installez le moteur dans les paramètres de Talmo ou avec «&#xa0;talmoctl setup&#xa0;».</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library cannot be loaded. Install the recogniser again.</source>
        <translation>La bibliothèque du moteur neuronal ne peut pas être chargée. Installez de nouveau le moteur.</translation>
    </message>
    <message>
        <source>A key such as F9 no longer reaches other programs, except together with Ctrl, Alt, Shift or Super. A modifier such as Right Ctrl keeps working in them.</source>
        <translation>Une touche comme F9 n’atteint plus les autres programmes, sauf avec Ctrl, Alt, Maj ou Super. Une touche de modification comme «&#xa0;Ctrl droite&#xa0;» y fonctionne toujours.</translation>
    </message>
    <message>
        <source>Press the key now. Esc leaves it as it is.</source>
        <translation>Appuyez maintenant sur la touche. Échap laisse tout en l’état.</translation>
    </message>
    <message>
        <source>Press a key…</source>
        <translation>Appuyez sur une touche…</translation>
    </message>
    <message>
        <source>Press the key you want</source>
        <translation>Appuyer sur la touche voulue</translation>
    </message>
    <message>
        <source>Add another</source>
        <translation>En ajouter une autre</translation>
    </message>
    <message>
        <source>No %1 on your keyboard?</source>
        <translation>Pas de touche «&#xa0;%1&#xa0;» sur votre clavier&#xa0;?</translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation>Utiliser %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Supprimer %1</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Langue</translation>
    </message>
    <message>
        <source>Dictate in</source>
        <translation>Dicter en</translation>
    </message>
    <message>
        <source>Set it up</source>
        <translation>Configurer</translation>
    </message>
    <message>
        <source>Use English for now</source>
        <translation>Utiliser l’anglais pour l’instant</translation>
    </message>
    <message>
        <source>Microphone level</source>
        <translation>Niveau du microphone</translation>
    </message>
    <message>
        <source>Talmo listens only while you dictate or test the microphone.</source>
        <translation>Talmo n’écoute que pendant que vous dictez ou testez le microphone.</translation>
    </message>
    <message>
        <source>Say something: the bar moves. Talmo listens while this page is open, and later only while you dictate.</source>
        <translation>Dites quelque chose&#xa0;: la barre bouge. Talmo écoute tant que cette page est ouverte, puis seulement pendant que vous dictez.</translation>
    </message>
    <message>
        <source>Record from</source>
        <translation>Enregistrer avec</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Tester</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Introuvable</translation>
    </message>
    <message>
        <source>Welcome to Talmo</source>
        <translation>Bienvenue dans Talmo</translation>
    </message>
    <message>
        <source>Hold %1, speak, and let go: your words are typed where the cursor is, in any program. Tap the key twice to dictate hands-free. Nothing that you say leaves this computer.</source>
        <translation>Maintenez %1, parlez et relâchez&#xa0;: vos mots s’écrivent à l’emplacement du curseur, dans n’importe quel programme. Appuyez deux fois sur la touche pour dicter en mains libres. Rien de ce que vous dites ne quitte cet ordinateur.</translation>
    </message>
    <message>
        <source>Starting Talmo again opens its settings. So does its microphone icon, if your panel has a place for it.</source>
        <translation>Relancer Talmo ouvre ses paramètres, tout comme l’icône de microphone, si votre tableau de bord l’affiche.</translation>
    </message>
    <message>
        <source>The key to hold</source>
        <translation>La touche à maintenir</translation>
    </message>
    <message>
        <source>Hold this key to speak</source>
        <translation>Maintenir cette touche pour parler</translation>
    </message>
    <message>
        <source>Try it</source>
        <translation>Essayer</translation>
    </message>
    <message>
        <source>A field to try it in</source>
        <translation>Un champ pour essayer</translation>
    </message>
    <message>
        <source>Recognition</source>
        <translation>Reconnaissance</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Terminé</translation>
    </message>
    <message>
        <source>Click here, hold %1 and say: This is my first dictation.</source>
        <translation>Cliquez ici, maintenez %1 et dites&#xa0;: This is my first dictation.</translation>
    </message>
    <message>
        <source>This desktop does not let Talmo type into other programs.</source>
        <translation>Cet environnement de bureau ne laisse pas Talmo écrire dans d’autres programmes.</translation>
    </message>
    <message>
        <source>GNOME lets Talmo hear its key and paste only with the help of an extension, which comes with Talmo and does nothing else.</source>
        <translation>GNOME ne permet à Talmo d’entendre sa touche et de coller qu’à l’aide d’une extension, fournie avec Talmo, qui ne fait rien d’autre.</translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is enabled. Log out and in once to start it.</source>
        <translation>L’extension GNOME de Talmo est activée. Fermez la session et rouvrez-la pour la démarrer.</translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is enabled.</source>
        <translation>L’extension GNOME de Talmo est activée.</translation>
    </message>
    <message>
        <source>GNOME&apos;s extensions are switched off. Switch them on in the Extensions application, then enable Talmo&apos;s here.</source>
        <translation>Les extensions de GNOME sont désactivées. Activez-les dans l’application Extensions, puis activez ici celle de Talmo.</translation>
    </message>
    <message>
        <source>GNOME could not start Talmo&apos;s extension. Update Talmo, then log out and in once.</source>
        <translation>GNOME n’a pas pu démarrer l’extension de Talmo. Mettez Talmo à jour, puis fermez la session et rouvrez-la.</translation>
    </message>
    <message>
        <source>This desktop</source>
        <translation>Cet environnement de bureau</translation>
    </message>
    <message>
        <source>Enable the extension</source>
        <translation>Activer l’extension</translation>
    </message>
    <message>
        <source>Hold to dictate</source>
        <translation>Maintenir pour dicter</translation>
    </message>
    <message>
        <source>Another program&apos;s shortcut is the dictation key already.</source>
        <translation>La touche de dictée est déjà le raccourci d’un autre programme.</translation>
    </message>
    <message>
        <source>Remove that shortcut in KDE&apos;s settings, then start Talmo again.</source>
        <translation>Supprimez ce raccourci dans les paramètres de KDE, puis redémarrez Talmo.</translation>
    </message>
    <message>
        <source>recommended</source>
        <translation>recommandé</translation>
    </message>
    <message>
        <source>Built in, to begin with (English)</source>
        <translation>Intégré, pour commencer (anglais)</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Détails</translation>
    </message>
    <message>
        <source>Details in the menu</source>
        <translation>Détails dans le menu</translation>
    </message>
    <message>
        <source>Speech is recognised on this computer whichever recogniser you choose; the network is used only to download models.</source>
        <translation>Quel que soit le moteur choisi, la parole est reconnue sur cet ordinateur&#xa0;; le réseau ne sert qu’à télécharger des modèles.</translation>
    </message>
    <message>
        <source>Inserted</source>
        <translation>Texte inséré</translation>
    </message>
    <message>
        <source>Recommended</source>
        <translation>Recommandé</translation>
    </message>
    <message>
        <source>None until you pause</source>
        <translation>Aucun avant une pause</translation>
    </message>
    <message>
        <source>The model for the live text is not installed; text appears when you pause.</source>
        <translation>Le modèle du texte en direct n’est pas installé ; le texte apparaît pendant les pauses.</translation>
    </message>
    <message>
        <source>Live text</source>
        <translation>Texte en direct</translation>
    </message>
    <message>
        <source>Final text</source>
        <translation>Texte final</translation>
    </message>
    <message>
        <source>The live text is shown while you speak. The final text replaces it and is inserted.</source>
        <translation>Le texte en direct s’affiche pendant que vous parlez. Le texte final le remplace et est inséré.</translation>
    </message>
    <message>
        <source>The desktop did not allow it for good. Switch this off and on again, and allow it in the dialog for later sessions too.</source>
        <translation>Le bureau ne l’a pas autorisé durablement. Désactivez puis réactivez cette option, et autorisez-la aussi pour les sessions suivantes dans la boîte de dialogue.</translation>
    </message>
    <message>
        <source>The desktop did not give Talmo a dictation key. Ask again in the settings, under Privacy, or bind a key to “talmoctl toggle” in the desktop&apos;s keyboard settings.</source>
        <translation>Le bureau n’a pas donné de touche de dictée à Talmo. Redemandez-la dans les paramètres, sous «&#xa0;Confidentialité&#xa0;», ou associez une touche à «&#xa0;talmoctl toggle&#xa0;» dans les paramètres clavier du bureau.</translation>
    </message>
    <message>
        <source>Ask for the key again</source>
        <translation>Redemander la touche</translation>
    </message>
    <message>
        <source>The desktop asks which key starts dictation.</source>
        <translation>Le bureau demande quelle touche démarre la dictée.</translation>
    </message>
    <message>
        <source>The desktop&apos;s key for dictation: %1</source>
        <translation>Touche de dictée du bureau&#xa0;: %1</translation>
    </message>
    <message>
        <source>This desktop lets Talmo type into Wayland windows only if you allow it.</source>
        <translation>Ce bureau ne laisse Talmo écrire dans les fenêtres Wayland qu’avec votre autorisation.</translation>
    </message>
    <message>
        <source>Allow it in the settings, under Privacy. Until then, paste the text with Ctrl+V.</source>
        <translation>Autorisez-le dans les paramètres, sous «&#xa0;Confidentialité&#xa0;». D’ici là, collez le texte avec Ctrl+V.</translation>
    </message>
    <message>
        <source>Paste with the desktop&apos;s remote control</source>
        <translation>Coller par la commande à distance du bureau</translation>
    </message>
    <message>
        <source>Lets Talmo press the paste shortcut in Wayland windows. The desktop may ask once, and may show that it is controlled while Talmo pastes.</source>
        <translation>Permet à Talmo d’actionner le raccourci de collage dans les fenêtres Wayland. Le bureau peut demander une fois votre accord, et indiquer qu’il est contrôlé pendant que Talmo colle.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>encore %1</translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is missing, so the key works in only a few programs. Reinstall the Talmo package.</source>
        <translation>L’extension GNOME de Talmo est absente&#xa0;; la touche ne fonctionne donc que dans quelques programmes. Réinstallez le paquet Talmo.</translation>
    </message>
    <message>
        <source>This speech model is for a recogniser that Talmo does not have. Update Talmo, or choose another one.</source>
        <translation>Ce modèle est destiné à un moteur que Talmo n’a pas. Mettez Talmo à jour, ou choisissez-en un autre.</translation>
    </message>
    <message>
        <source>A speech model could not be tested. Try again when the computer is less busy.</source>
        <translation>Un modèle vocal n’a pas pu être testé. Réessayez lorsque l’ordinateur sera moins occupé.</translation>
    </message>
    <message>
        <source>The downloaded file cannot be used. Try again; if it fails again, choose another recogniser.</source>
        <translation>Le fichier téléchargé est inutilisable. Réessayez&#xa0;; en cas de nouvel échec, choisissez un autre moteur.</translation>
    </message>
    <message>
        <source>The download cannot be unpacked. Free some space on the disk, then try again.</source>
        <translation>Le téléchargement ne peut pas être décompressé. Libérez de l’espace disque, puis réessayez.</translation>
    </message>
    <message>
        <source>The downloaded file cannot be read. Try again.</source>
        <translation>Le fichier téléchargé ne peut pas être lu. Réessayez.</translation>
    </message>
    <message>
        <source>The download cannot be saved. Free some space on the disk, then try again.</source>
        <translation>Le téléchargement ne peut pas être enregistré. Libérez de l’espace disque, puis réessayez.</translation>
    </message>
    <message>
        <source>The model “%1” is not installed.</source>
        <translation>Le modèle «&#xa0;%1&#xa0;» n’est pas installé.</translation>
    </message>
    <message>
        <source>“%1” is a link to a model stored elsewhere. Delete the link in the folder for models yourself.</source>
        <translation>«&#xa0;%1&#xa0;» est un lien vers un modèle situé ailleurs. Supprimez vous-même ce lien dans le dossier de modèles.</translation>
    </message>
    <message>
        <source>Some files of the model “%1” could not be deleted. Check the permissions of the folder for models.</source>
        <translation>Certains fichiers du modèle «&#xa0;%1&#xa0;» n’ont pas pu être supprimés. Vérifiez les droits d’accès du dossier de modèles.</translation>
    </message>
    <message>
        <source>The server cannot be trusted. Check this computer&apos;s date and network, then try again.</source>
        <translation>Le serveur n’est pas digne de confiance. Vérifiez la date et le réseau de cet ordinateur, puis réessayez.</translation>
    </message>
    <message>
        <source>The server does not deliver this file at present. Try again later.</source>
        <translation>Le serveur ne fournit pas ce fichier pour le moment. Réessayez plus tard.</translation>
    </message>
    <message>
        <source>There is not enough space on the disk. Free some, then try again. Needed: </source>
        <translation>L’espace disque est insuffisant. Libérez-en, puis réessayez. Nécessaire&#xa0;: </translation>
    </message>
    <message>
        <source>“%1” is still being installed. Wait for it to finish, or cancel it.</source>
        <translation>«&#xa0;%1&#xa0;» est encore en cours d’installation. Attendez la fin, ou annulez.</translation>
    </message>
    <message>
        <source>Speech recognition failed. Try again; if it fails again, choose another recogniser in the settings.</source>
        <translation>La reconnaissance vocale a échoué. Réessayez&#xa0;; en cas de nouvel échec, choisissez un autre moteur dans les réglages.</translation>
    </message>
    <message>
        <source>The speech-detection model that this speech model needs is missing. Reinstall this model to get both.</source>
        <translation>Le modèle de détection de la parole dont ce modèle a besoin est absent. Réinstallez ce modèle pour obtenir les deux.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is incomplete. Install the recogniser again.</source>
        <translation>La bibliothèque du moteur neuronal est incomplète. Installez de nouveau le moteur.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is of a version that models of this kind do not work with. Install the model again.</source>
        <translation>Les modèles de ce type ne fonctionnent pas avec cette version de la bibliothèque du moteur neuronal. Installez de nouveau le modèle.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is too old. Install the recogniser again to get a newer one.</source>
        <translation>La bibliothèque du moteur neuronal est trop ancienne. Installez de nouveau le moteur pour en obtenir une plus récente.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is newer than this version of Talmo knows. Update Talmo, or install the recogniser again.</source>
        <translation>La bibliothèque du moteur neuronal est trop récente pour cette version de Talmo. Mettez Talmo à jour, ou installez de nouveau le moteur.</translation>
    </message>
    <message>
        <source>This speech model cannot be used. Install it again.</source>
        <translation>Ce modèle vocal est inutilisable. Installez-le de nouveau.</translation>
    </message>
</context>
</TS>
