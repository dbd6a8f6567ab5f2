<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>Talmo</name>
    <message>
        <source>Grant microphone and speech-recognition permissions first.</source>
        <translation>Conceda primero los permisos de micrófono y de reconocimiento de voz.</translation>
    </message>
    <message>
        <source>No speech detected.</source>
        <translation>No se ha detectado voz.</translation>
    </message>
    <message>
        <source>An unknown error occurred.</source>
        <translation>Se ha producido un error desconocido.</translation>
    </message>
    <message>
        <source>This Mac doesn&apos;t support Apple Intelligence.</source>
        <translation>El modelo de lenguaje está desactivado en el archivo de configuración de Talmo.</translation>
    </message>
    <message>
        <source>Apple Intelligence isn&apos;t turned on. Enable it in System Settings &gt; Apple Intelligence &amp; Siri to use AI cleanup.</source>
        <translation>No hay ningún modelo de lenguaje en ejecución en este equipo. Inicie uno, por ejemplo el servidor de llama.cpp u Ollama, para usar la corrección con IA.</translation>
    </message>
    <message>
        <source>The on-device language model is still preparing. Try again shortly.</source>
        <translation>El modelo de lenguaje local aún se está preparando. Vuelva a intentarlo en breve.</translation>
    </message>
    <message>
        <source>The on-device language model isn&apos;t available right now.</source>
        <translation>El modelo de lenguaje local no está disponible en este momento.</translation>
    </message>
    <message>
        <source>Couldn&apos;t set up microphone capture: </source>
        <translation>No se ha podido preparar la captura del micrófono: </translation>
    </message>
    <message>
        <source>Couldn&apos;t start audio capture: </source>
        <translation>No se ha podido iniciar la captura de audio: </translation>
    </message>
    <message>
        <source>No microphone input is available.</source>
        <translation>No hay ninguna entrada de micrófono disponible.</translation>
    </message>
    <message>
        <source>Talmo needs Accessibility access (System Settings &gt; Privacy &amp; Security &gt; Accessibility) to insert text into other apps.</source>
        <translation>Talmo necesita un servidor X con las extensiones XTEST y XInput 2.2 para insertar texto en otras aplicaciones.</translation>
    </message>
    <message>
        <source>Nothing to insert.</source>
        <translation>Nada que insertar.</translation>
    </message>
    <message>
        <source>On-device speech recognition isn&apos;t available on this Mac.</source>
        <translation>El reconocimiento de voz local no está disponible en este equipo.</translation>
    </message>
    <message>
        <source>The current language isn&apos;t supported for on-device transcription.</source>
        <translation>El idioma actual no es compatible con la transcripción local.</translation>
    </message>
    <message>
        <source>The on-device speech model for this language isn&apos;t installed yet. Installing it once requires an internet connection; after that, transcription works fully offline.</source>
        <translation>El modelo de voz local para este idioma aún no está instalado. Solo la instalación requiere conexión a Internet; después, la transcripción funciona totalmente sin conexión.</translation>
    </message>
    <message>
        <source>Couldn&apos;t find a compatible audio format for the microphone and speech recognizer.</source>
        <translation>No se ha encontrado un formato de audio compatible con el micrófono y el reconocimiento de voz.</translation>
    </message>
    <message>
        <source>Not currently recording.</source>
        <translation>No hay ninguna grabación en curso.</translation>
    </message>
    <message>
        <source>Words and phrases you add here are passed to the cleanup step as context so they&apos;re preserved exactly, instead of being &quot;corrected&quot; away.</source>
        <translation>Las palabras y frases que añada aquí se pasan como contexto a la corrección para que se conserven tal cual, en lugar de ser «corregidas».</translation>
    </message>
    <message>
        <source>Add a word or phrase</source>
        <translation>Añadir una palabra o frase</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Añadir</translation>
    </message>
    <message>
        <source>Dictionary</source>
        <translation>Diccionario</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message>
        <source>Hold fn to record and release to insert, or double-tap fn for hands-free recording (press fn again to stop). Works even when Talmo isn&apos;t the frontmost app. Requires &quot;Press 🌐 key to: Do Nothing&quot; in System Settings &gt; Keyboard, so macOS&apos;s own Globe-key action doesn&apos;t also fire. Not yet configurable in this MVP.</source>
        <translation>Mantenga pulsada la tecla %1 para grabar y suéltela para insertar, o pulse %1 dos veces para grabar con manos libres (pulse %1 de nuevo para detener). Funciona aunque Talmo no esté en primer plano. Puede elegir otras teclas más abajo.</translation>
    </message>
    <message>
        <source>Uses Apple&apos;s on-device Foundation Models to remove filler words and fix punctuation. When off, only basic local formatting is applied.</source>
        <translation>Elimina las muletillas y corrige la puntuación mediante un servidor de modelos de lenguaje en este equipo. Si está desactivado, solo se aplica un formato local básico.</translation>
    </message>
    <message>
        <source>Actively trims filler, redundancy, and hedging instead of just lightly cleaning up your wording. Off by default since it rewrites more than Talmo normally does.</source>
        <translation>Recorta muletillas, redundancias y rodeos en lugar de solo retocar ligeramente la redacción. Desactivado de forma predeterminada, porque reescribe más de lo habitual en Talmo.</translation>
    </message>
    <message>
        <source>Rewrites dictation to match the selected tone. Combinable with Concise text above. &quot;Standard&quot; makes no tone change.</source>
        <translation>Reescribe el dictado con el tono elegido. Se puede combinar con «Texto conciso» (arriba). «Estándar» no cambia el tono.</translation>
    </message>
    <message>
        <source>Standard</source>
        <translation>Estándar</translation>
    </message>
    <message>
        <source>Professional</source>
        <translation>Profesional</translation>
    </message>
    <message>
        <source>Friendly</source>
        <translation>Amistoso</translation>
    </message>
    <message>
        <source>Polite</source>
        <translation>Cortés</translation>
    </message>
    <message>
        <source>Push-to-talk</source>
        <translation>Pulsar para hablar</translation>
    </message>
    <message>
        <source>Shortcut</source>
        <translation>Atajo</translation>
    </message>
    <message>
        <source>Cleanup</source>
        <translation>Corrección</translation>
    </message>
    <message>
        <source>Enable AI cleanup</source>
        <translation>Activar la corrección con IA</translation>
    </message>
    <message>
        <source>Concise text</source>
        <translation>Texto conciso</translation>
    </message>
    <message>
        <source>Tone</source>
        <translation>Tono</translation>
    </message>
    <message>
        <source>Say it and it happens — like traditional dictation software:</source>
        <translation>Dígalo y se hace, como en los programas de dictado clásicos (solo en inglés):</translation>
    </message>
    <message>
        <source>&quot;...as bullet points&quot; → formats as a bullet list</source>
        <translation>«... as bullet points» → da formato de lista con viñetas</translation>
    </message>
    <message>
        <source>&quot;...new paragraph...&quot; → starts a new paragraph</source>
        <translation>«... new paragraph ...» → empieza un párrafo nuevo</translation>
    </message>
    <message>
        <source>&quot;...new line...&quot; → starts a new line</source>
        <translation>«... new line ...» → empieza una línea nueva</translation>
    </message>
    <message>
        <source>Startup</source>
        <translation>Inicio</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Iniciar al iniciar sesión</translation>
    </message>
    <message>
        <source>Talmo</source>
        <translation>Talmo</translation>
    </message>
    <message>
        <source>Start Recording</source>
        <translation>Iniciar grabación</translation>
    </message>
    <message>
        <source>Microphone access needed</source>
        <translation>Se necesita acceso al micrófono</translation>
    </message>
    <message>
        <source>Speech recognition access needed</source>
        <translation>Se necesita acceso al reconocimiento de voz</translation>
    </message>
    <message>
        <source>Accessibility access needed</source>
        <translation>Talmo no puede escribir en otras ventanas</translation>
    </message>
    <message>
        <source>Talmo needs permissions</source>
        <translation>Talmo necesita permisos</translation>
    </message>
    <message>
        <source>Talmo is ready</source>
        <translation>Talmo está listo</translation>
    </message>
    <message>
        <source>Hold %1, or double-tap for hands-free</source>
        <translation>Mantenga %1, o pulse dos veces para manos libres</translation>
    </message>
    <message>
        <source>Listening…</source>
        <translation>Escuchando…</translation>
    </message>
    <message>
        <source>Stop Recording</source>
        <translation>Detener grabación</translation>
    </message>
    <message>
        <source>Cleaning up…</source>
        <translation>Corrigiendo…</translation>
    </message>
    <message>
        <source>Inserting…</source>
        <translation>Insertando…</translation>
    </message>
    <message>
        <source>Something went wrong</source>
        <translation>Algo ha fallado</translation>
    </message>
    <message>
        <source>Grant Permissions…</source>
        <translation>Conceder permisos…</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Configuración</translation>
    </message>
    <message>
        <source>⌘,</source>
        <translation>Ctrl+,</translation>
    </message>
    <message>
        <source>Quit Talmo</source>
        <translation>Salir de Talmo</translation>
    </message>
    <message>
        <source>Talmo has no backend, no account, and no network functionality. Recording, transcription, and text cleanup all run using Apple&apos;s on-device Speech and Foundation Models frameworks. Nothing you say or type is sent anywhere.</source>
        <translation>Talmo no tiene servidor ni cuentas. La grabación y la transcripción se realizan en este equipo. Con la corrección con IA activada, el texto se envía a un servidor de modelos de lenguaje en este equipo, si hay uno en ejecución, y a ningún otro sitio. Talmo solo usa Internet para descargar una única vez un modelo de voz.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Micrófono</translation>
    </message>
    <message>
        <source>Speech Recognition</source>
        <translation>Reconocimiento de voz</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Escribir en otras ventanas</translation>
    </message>
    <message>
        <source>Audio and transcripts are processed locally on this Mac.</source>
        <translation>El audio y las transcripciones se procesan localmente en este equipo.</translation>
    </message>
    <message>
        <source>Open Settings…</source>
        <translation>Abrir configuración…</translation>
    </message>
    <message>
        <source>Granted</source>
        <translation>Concedido</translation>
    </message>
    <message>
        <source>Not granted</source>
        <translation>No concedido</translation>
    </message>
    <message>
        <source>Listening</source>
        <translation>Escuchando</translation>
    </message>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Privacidad</translation>
    </message>
    <message>
        <source>Talmo Settings</source>
        <translation>Configuración de Talmo</translation>
    </message>
    <message>
        <source>Automatic (best installed)</source>
        <translation>Automático (el mejor instalado)</translation>
    </message>
    <message>
        <source>This model is not installed; another one is used.</source>
        <translation>Este modelo no está instalado; se usa otro.</translation>
    </message>
    <message>
        <source>Recogniser</source>
        <translation>Motor de reconocimiento</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modelo</translation>
    </message>
    <message>
        <source>Installation</source>
        <translation>Instalación</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
    <message>
        <source>Licence: %1</source>
        <translation>Licencia: %1</translation>
    </message>
    <message>
        <source>Still working on the last sentence</source>
        <translation>Aún se está procesando la última frase</translation>
    </message>
    <message>
        <source>Speech recognition stopped responding. Copy Last Dictation in the menu has what was heard until then.</source>
        <translation>El reconocimiento de voz ha dejado de responder. «Copiar el último dictado», en el menú, contiene lo que se oyó hasta entonces.</translation>
    </message>
    <message>
        <source>The cursor is in a password field, so nothing was pasted. Choose “Copy Last Dictation” from the icon&apos;s menu.</source>
        <translation>El cursor está en un campo de contraseña, por lo que no se ha pegado nada. Elija «Copiar el último dictado» en el menú del icono.</translation>
    </message>
    <message>
        <source>Talmo does not paste if the application in front reports that the cursor is in a password field. Requires the desktop&apos;s accessibility service.</source>
        <translation>Talmo no pega nada si la aplicación en primer plano indica que el cursor está en un campo de contraseña. Requiere el servicio de accesibilidad del escritorio.</translation>
    </message>
    <message>
        <source>Protect password fields</source>
        <translation>Proteger los campos de contraseña</translation>
    </message>
    <message>
        <source>Your text is sent to %1 at %2.</source>
        <translation>Su texto se envía a %1 en %2.</translation>
    </message>
    <message>
        <source>While this is off, no text is sent to %1 at %2.</source>
        <translation>Mientras esté desactivado, no se envía ningún texto a %1 en %2.</translation>
    </message>
    <message>
        <source>Another user&apos;s program is listening at %1. Your text is not sent to it.</source>
        <translation>El programa de otro usuario escucha en %1. Su texto no se le envía.</translation>
    </message>
    <message>
        <source>The settings could not be saved. Is the disk full?</source>
        <translation>No se ha podido guardar la configuración. ¿Está lleno el disco?</translation>
    </message>
    <message>
        <source>The sound server is not responding. Try again in a moment.</source>
        <translation>El servidor de sonido no responde. Vuelva a intentarlo dentro de un momento.</translation>
    </message>
    <message>
        <source>The connection to the sound server was lost. Try again.</source>
        <translation>Se ha perdido la conexión con el servidor de sonido. Vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The operation was cancelled.</source>
        <translation>La operación se ha cancelado.</translation>
    </message>
    <message>
        <source>Nothing has been dictated yet.</source>
        <translation>Aún no se ha dictado nada.</translation>
    </message>
    <message>
        <source>The text is too long.</source>
        <translation>El texto es demasiado largo.</translation>
    </message>
    <message>
        <source>The request took too long to arrive.</source>
        <translation>La solicitud ha tardado demasiado en llegar.</translation>
    </message>
    <message>
        <source>Unknown request.</source>
        <translation>Solicitud desconocida.</translation>
    </message>
    <message>
        <source>There is no earlier clipboard to restore.</source>
        <translation>No hay ningún portapapeles anterior que restaurar.</translation>
    </message>
    <message>
        <source>Talmo did not respond.</source>
        <translation>Talmo no ha respondido.</translation>
    </message>
    <message>
        <source>The window is not responding. The text is on the clipboard and will be inserted when the window recovers.</source>
        <translation>La ventana no responde. El texto está en el portapapeles y se insertará cuando la ventana vuelva a responder.</translation>
    </message>
    <message>
        <source>No window has keyboard focus. The text is on the clipboard: paste it with %1.</source>
        <translation>Ninguna ventana tiene el foco del teclado. El texto está en el portapapeles: péguelo con %1.</translation>
    </message>
    <message>
        <source>Another program has grabbed the keyboard. The text is on the clipboard: paste it with %1.</source>
        <translation>Otro programa ha capturado el teclado. El texto está en el portapapeles: péguelo con %1.</translation>
    </message>
    <message>
        <source>This keyboard layout has no key for pasting. The text is on the clipboard: paste it from a menu.</source>
        <translation>Esta distribución de teclado no tiene tecla para pegar. El texto está en el portapapeles: péguelo desde un menú.</translation>
    </message>
    <message>
        <source>The active window changed. The text is on the clipboard: paste it with %1.</source>
        <translation>La ventana activa ha cambiado. El texto está en el portapapeles: péguelo con %1.</translation>
    </message>
    <message>
        <source>Another program replaced the clipboard. Choose “Copy Last Dictation” from the icon&apos;s menu.</source>
        <translation>Otro programa ha reemplazado el portapapeles. Elija «Copiar el último dictado» en el menú del icono.</translation>
    </message>
    <message>
        <source>No window accepted the text. It is on the clipboard: paste it with %1.</source>
        <translation>Ninguna ventana ha aceptado el texto. Está en el portapapeles: péguelo con %1.</translation>
    </message>
    <message>
        <source>disabled in the settings</source>
        <translation>desactivado en la configuración</translation>
    </message>
    <message>
        <source>no model server is running on this machine</source>
        <translation>no hay ningún servidor de modelos en ejecución en este equipo</translation>
    </message>
    <message>
        <source>not checked yet</source>
        <translation>aún sin comprobar</translation>
    </message>
    <message>
        <source>Part of the clipboard was lost: it held more than Talmo can keep. Copy it again if you need it.</source>
        <translation>Se ha perdido parte del portapapeles: contenía más de lo que Talmo puede conservar. Vuelva a copiarlo si lo necesita.</translation>
    </message>
    <message>
        <source>Part of the clipboard was lost: its application did not provide it in time. Copy it again if you need it.</source>
        <translation>Se ha perdido parte del portapapeles: su aplicación no la proporcionó a tiempo. Vuelva a copiarlo si lo necesita.</translation>
    </message>
    <message>
        <source>The built-in speech model is damaged. Reinstall the package pocketsphinx-en-us.</source>
        <translation>El modelo de voz integrado está dañado. Reinstale el paquete pocketsphinx-en-us.</translation>
    </message>
    <message>
        <source>The connection timed out.</source>
        <translation>Se ha agotado el tiempo de espera de la conexión.</translation>
    </message>
    <message>
        <source>Downloading: </source>
        <translation>Descargando: </translation>
    </message>
    <message>
        <source>Verifying</source>
        <translation>Comprobando</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>Descomprimiendo</translation>
    </message>
    <message>
        <source>Testing</source>
        <translation>Probando</translation>
    </message>
    <message>
        <source>Talmo cannot write to its folder for models. Check the folder&apos;s permissions.</source>
        <translation>Talmo no puede escribir en su carpeta de modelos. Compruebe los permisos de la carpeta.</translation>
    </message>
    <message>
        <source>Another model is being installed or removed. Try again when that has finished.</source>
        <translation>Se está instalando o quitando otro modelo. Vuelva a intentarlo cuando haya terminado.</translation>
    </message>
    <message>
        <source>The server cannot resume this download; starting over.</source>
        <translation>El servidor no puede reanudar esta descarga; se empieza de nuevo.</translation>
    </message>
    <message>
        <source>The server resumed at the wrong offset.</source>
        <translation>El servidor ha reanudado la descarga en una posición incorrecta.</translation>
    </message>
    <message>
        <source>The server sent more data than announced.</source>
        <translation>El servidor ha enviado más datos de los anunciados.</translation>
    </message>
    <message>
        <source>The connection closed before the download was complete.</source>
        <translation>La conexión se ha cerrado antes de completar la descarga.</translation>
    </message>
    <message>
        <source>The speech model isn&apos;t installed. Install the package pocketsphinx-en-us.</source>
        <translation>El modelo de voz no está instalado. Instale el paquete pocketsphinx-en-us.</translation>
    </message>
    <message>
        <source>This speech model can no longer be used. Install it again.</source>
        <translation>Este modelo de voz ya no se puede usar. Instálelo de nuevo.</translation>
    </message>
    <message>
        <source>Copy Last Dictation</source>
        <translation>Copiar el último dictado</translation>
    </message>
    <message>
        <source>Restore Earlier Clipboard</source>
        <translation>Restaurar el portapapeles anterior</translation>
    </message>
    <message>
        <source>Editing took longer than %1 seconds three times. A smaller model is faster, for example %2 (%3 MB, %4).</source>
        <translation>La corrección ha tardado más de %1 segundos en tres ocasiones. Un modelo más pequeño es más rápido, por ejemplo %2 (%3 MB, %4).</translation>
    </message>
    <message>
        <source>Editing took longer than %1 seconds three times. It is faster with a smaller model, or with AI cleanup turned off.</source>
        <translation>La corrección ha tardado más de %1 segundos en tres ocasiones. Es más rápido con un modelo más pequeño o con la corrección con IA desactivada.</translation>
    </message>
    <message>
        <source>%1: stop · Esc: discard</source>
        <translation>%1: detener · Esc: descartar</translation>
    </message>
    <message>
        <source>%1: stop</source>
        <translation>%1: detener</translation>
    </message>
    <message>
        <source>Esc: discard</source>
        <translation>Esc: descartar</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Cancelado</translation>
    </message>
    <message>
        <source>Pause Talmo</source>
        <translation>Pausar Talmo</translation>
    </message>
    <message>
        <source>Resume Talmo</source>
        <translation>Reanudar Talmo</translation>
    </message>
    <message>
        <source>Talmo is paused</source>
        <translation>Talmo está en pausa</translation>
    </message>
    <message>
        <source>The key does nothing until you resume</source>
        <translation>La tecla no hace nada hasta que reanude Talmo</translation>
    </message>
    <message>
        <source>Dictating</source>
        <translation>Dictado</translation>
    </message>
    <message>
        <source>Space between dictations</source>
        <translation>Espacio entre dictados</translation>
    </message>
    <message>
        <source>Puts a space before a dictation that continues the last one: in the same window, with no key or click in between.</source>
        <translation>Pone un espacio antes de un dictado que continúa el anterior: en la misma ventana, sin teclas ni clics entre ambos.</translation>
    </message>
    <message>
        <source>Sounds</source>
        <translation>Sonidos</translation>
    </message>
    <message>
        <source>Plays a sound of the desktop when a recording starts, when it ends and when something goes wrong.</source>
        <translation>Reproduce un sonido del escritorio cuando empieza una grabación, cuando termina y cuando algo falla.</translation>
    </message>
    <message>
        <source>Each is heard as well as written your way. If one is misheard, select it and write what it sounds like.</source>
        <translation>Cada una se reconoce al oírla, además de escribirse a su manera. Si alguna se entiende mal, selecciónela y escriba cómo suena.</translation>
    </message>
    <message>
        <source>Each is heard as well as written your way.</source>
        <translation>Cada una se reconoce al oírla, además de escribirse a su manera.</translation>
    </message>
    <message>
        <source>Sounds like</source>
        <translation>Suena como</translation>
    </message>
    <message>
        <source>Used by the built-in recogniser</source>
        <translation>Lo usa el motor integrado</translation>
    </message>
    <message>
        <source>Needs AI cleanup with a language model. Without one, these words are left out and no list is made.</source>
        <translation>Requiere la corrección con IA con un modelo de lenguaje. Sin él, estas palabras se omiten y no se crea ninguna lista.</translation>
    </message>
    <message>
        <source>The last 50, in memory only: they are gone when Talmo ends or you switch this off. Nothing is kept that went into a field which reports itself as a password field.</source>
        <translation>Los últimos 50, solo en memoria: desaparecen al cerrar Talmo o al desactivar esta opción. No se conserva nada de lo que haya ido a un campo que se identifica como campo de contraseña.</translation>
    </message>
    <message>
        <source>Keep a list of dictations</source>
        <translation>Conservar una lista de dictados</translation>
    </message>
    <message>
        <source>Dictations</source>
        <translation>Dictados</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copiar</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vaciar</translation>
    </message>
    <message>
        <source>Text files (*.txt);;All files (*)</source>
        <translation>Archivos de texto (*.txt);;Todos los archivos (*)</translation>
    </message>
    <message>
        <source>Import…</source>
        <translation>Importar…</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportar…</translation>
    </message>
    <message>
        <source>Import Words</source>
        <translation>Importar palabras</translation>
    </message>
    <message>
        <source>Export Words</source>
        <translation>Exportar palabras</translation>
    </message>
    <message>
        <source>This file could not be read as text. Choose a text file with one word per line.</source>
        <translation>No se ha podido leer este archivo como texto. Elija un archivo de texto con una palabra por línea.</translation>
    </message>
    <message>
        <source>New words: %1</source>
        <translation>Palabras nuevas: %1</translation>
    </message>
    <message>
        <source>The words could not be saved there. Choose another folder, or free some disk space.</source>
        <translation>No se han podido guardar las palabras ahí. Elija otra carpeta o libere espacio en el disco.</translation>
    </message>
    <message>
        <source>Words saved: %1</source>
        <translation>Palabras guardadas: %1</translation>
    </message>
    <message>
        <source>%1, sounds like %2</source>
        <translation>%1, suena como %2</translation>
    </message>
    <message>
        <source>Licences: %1</source>
        <translation>Licencias: %1</translation>
    </message>
    <message>
        <source>Talmo cannot use models of this kind: </source>
        <translation>Talmo no puede usar modelos de este tipo: </translation>
    </message>
    <message>
        <source>These models need the library of sherpa-onnx, which is not where the settings say, or does not exist for this computer. Remove linux.neuralLibrary from Talmo&apos;s settings file to have it downloaded.</source>
        <translation>Estos modelos necesitan la biblioteca de sherpa-onnx, que no está donde indica la configuración o no existe para este equipo. Quite linux.neuralLibrary del archivo de configuración de Talmo para que se descargue.</translation>
    </message>
    <message>
        <source>The server cannot be reached. Check the network connection, then try again; the download goes on where it stopped.</source>
        <translation>No se puede acceder al servidor. Compruebe la conexión de red y vuelva a intentarlo; la descarga continuará donde se detuvo.</translation>
    </message>
    <message>
        <source>The file on the server is not the one that Talmo knows; its maker has probably renewed it. Update Talmo, or accept the new file with this command: </source>
        <translation>El archivo del servidor no es el que Talmo conoce; probablemente su autor lo haya renovado. Actualice Talmo o acepte el nuevo archivo con esta orden: </translation>
    </message>
    <message>
        <source>This model is too slow for this computer: </source>
        <translation>Este modelo es demasiado lento para este equipo: </translation>
    </message>
    <message>
        <source>This model needs a newer library than the installed one. Install the model again, and the library comes with it: </source>
        <translation>Este modelo necesita una biblioteca más reciente que la instalada. Instale de nuevo el modelo y la biblioteca vendrá con él: </translation>
    </message>
    <message>
        <source>Installing a recogniser…</source>
        <translation>Instalando un motor de reconocimiento…</translation>
    </message>
    <message>
        <source>Get better recognition</source>
        <translation>Obtener un mejor reconocimiento</translation>
    </message>
    <message>
        <source>Ctrl+Shift+V</source>
        <translation>Ctrl+Mayús+V</translation>
    </message>
    <message>
        <source>Shift+Insert</source>
        <translation>Mayús+Ins</translation>
    </message>
    <message>
        <source>Ctrl+V</source>
        <translation>Ctrl+V</translation>
    </message>
    <message>
        <source>Left Ctrl</source>
        <translation>Ctrl izquierdo</translation>
    </message>
    <message>
        <source>Right Ctrl</source>
        <translation>Ctrl derecho</translation>
    </message>
    <message>
        <source>Left Shift</source>
        <translation>Mayús izquierda</translation>
    </message>
    <message>
        <source>Right Shift</source>
        <translation>Mayús derecha</translation>
    </message>
    <message>
        <source>Left Alt</source>
        <translation>Alt izquierdo</translation>
    </message>
    <message>
        <source>Right Alt</source>
        <translation>Alt derecho</translation>
    </message>
    <message>
        <source>AltGr</source>
        <translation>AltGr</translation>
    </message>
    <message>
        <source>Left Super</source>
        <translation>Super izquierdo</translation>
    </message>
    <message>
        <source>Right Super</source>
        <translation>Super derecho</translation>
    </message>
    <message>
        <source>Caps Lock</source>
        <translation>Bloq Mayús</translation>
    </message>
    <message>
        <source>Scroll Lock</source>
        <translation>Bloq Despl</translation>
    </message>
    <message>
        <source>Num Lock</source>
        <translation>Bloq Num</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menú</translation>
    </message>
    <message>
        <source>Print Screen</source>
        <translation>Impr Pant</translation>
    </message>
    <message>
        <source>Fn</source>
        <translation>Fn</translation>
    </message>
    <message>
        <source>Copied: press %1</source>
        <translation>Copiado: pulse %1</translation>
    </message>
    <message>
        <source>Dictation key</source>
        <translation>Tecla de dictado</translation>
    </message>
    <message>
        <source>This desktop may not tell Talmo about keys while a Wayland window is in front.</source>
        <translation>Es posible que este escritorio no informe a Talmo de las teclas mientras haya una ventana de Wayland en primer plano.</translation>
    </message>
    <message>
        <source>Bind a key to “talmoctl toggle” in the desktop&apos;s keyboard settings.</source>
        <translation>Asigne una tecla a «talmoctl toggle» en los ajustes de teclado del escritorio.</translation>
    </message>
    <message>
        <source>Inserting text</source>
        <translation>Inserción de texto</translation>
    </message>
    <message>
        <source>This desktop does not let Talmo type into Wayland windows.</source>
        <translation>Este escritorio no permite que Talmo escriba en ventanas de Wayland.</translation>
    </message>
    <message>
        <source>After a dictation, paste the text with Ctrl+V.</source>
        <translation>Después de dictar, pegue el texto con Ctrl+V.</translation>
    </message>
    <message>
        <source>The desktop&apos;s sound server is not running. Start PipeWire or PulseAudio, or log in again.</source>
        <translation>El servidor de sonido del escritorio no está en ejecución. Inicie PipeWire o PulseAudio, o vuelva a iniciar sesión.</translation>
    </message>
    <message>
        <source>The microphone “%1” gives only silence. Is it muted?</source>
        <translation>El micrófono «%1» solo da silencio. ¿Está silenciado?</translation>
    </message>
    <message>
        <source>The microphone “%1” was unplugged. Plug it in again, or choose another one in Talmo&apos;s settings.</source>
        <translation>Se ha desconectado el micrófono «%1». Vuelva a conectarlo o elija otro en la configuración de Talmo.</translation>
    </message>
    <message>
        <source>The settings file names a key “%1”, which does not exist. Press the key you want instead.</source>
        <translation>El archivo de configuración indica una tecla «%1» que no existe. Pulse en su lugar la tecla que desee.</translation>
    </message>
    <message>
        <source>“%1” types text, so it cannot be held. Choose a key that types nothing, such as F9.</source>
        <translation>«%1» escribe texto, así que no se puede mantener pulsada. Elija una tecla que no escriba nada, como F9.</translation>
    </message>
    <message>
        <source>Your keyboard layout has no key “%1”. Press the key you want instead.</source>
        <translation>Su distribución de teclado no tiene la tecla «%1». Pulse en su lugar la tecla que desee.</translation>
    </message>
    <message>
        <source>Another program uses “%1” as well, and reacts to it too. Choose another key, or change that program.</source>
        <translation>Otro programa también usa «%1» y reacciona a ella. Elija otra tecla o cambie ese programa.</translation>
    </message>
    <message>
        <source>The keyboard layout has no name for this key. Press another one.</source>
        <translation>La distribución de teclado no tiene nombre para esta tecla. Pulse otra.</translation>
    </message>
    <message>
        <source>System language (%1)</source>
        <translation>Idioma del sistema (%1)</translation>
    </message>
    <message>
        <source>Dictating in %1 needs another recogniser.</source>
        <translation>Dictar en este idioma (%1) requiere otro motor de reconocimiento.</translation>
    </message>
    <message>
        <source>System default</source>
        <translation>Predeterminado del sistema</translation>
    </message>
    <message>
        <source>System default (%1)</source>
        <translation>Predeterminado del sistema (%1)</translation>
    </message>
    <message>
        <source>%1 (not connected)</source>
        <translation>%1 (no conectado)</translation>
    </message>
    <message>
        <source>The sound server does not let Talmo record. Check the desktop&apos;s privacy settings.</source>
        <translation>El servidor de sonido no permite grabar a Talmo. Compruebe los ajustes de privacidad del escritorio.</translation>
    </message>
    <message>
        <source>No microphone was found. Plug one in, or enable one in the desktop&apos;s sound settings.</source>
        <translation>No se ha encontrado ningún micrófono. Conecte uno o actívelo en los ajustes de sonido del escritorio.</translation>
    </message>
    <message>
        <source>“%1” is not connected. Until it is, the system&apos;s default microphone is used.</source>
        <translation>«%1» no está conectado. Mientras tanto se usa el micrófono predeterminado del sistema.</translation>
    </message>
    <message>
        <source>Microphone unplugged</source>
        <translation>Micrófono desconectado</translation>
    </message>
    <message>
        <source>“%1” is not connected. Talmo records from the system&apos;s default microphone instead.</source>
        <translation>«%1» no está conectado. Talmo graba en su lugar con el micrófono predeterminado del sistema.</translation>
    </message>
    <message>
        <source>Talmo is running. This desktop has no place for its icon: start Talmo again to open its settings.</source>
        <translation>Talmo está en ejecución. Este escritorio no tiene sitio para su icono: inicie Talmo de nuevo para abrir su configuración.</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Re Pág</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Av Pág</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is not installed. Install the recogniser in Talmo&apos;s settings, or with “talmoctl setup”.</source>
        <translation>La biblioteca del motor neuronal no está instalada. Instale el motor en la configuración de Talmo o con «talmoctl setup».</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library cannot be loaded. Install the recogniser again.</source>
        <translation>No se puede cargar la biblioteca del motor neuronal. Instale el motor de nuevo.</translation>
    </message>
    <message>
        <source>A key such as F9 no longer reaches other programs, except together with Ctrl, Alt, Shift or Super. A modifier such as Right Ctrl keeps working in them.</source>
        <translation>Una tecla como F9 deja de llegar a otros programas, salvo junto con Ctrl, Alt, Mayús o Super. Una tecla modificadora como «Ctrl derecho» sigue funcionando en ellos.</translation>
    </message>
    <message>
        <source>Press the key now. Esc leaves it as it is.</source>
        <translation>Pulse ahora la tecla. Esc lo deja como está.</translation>
    </message>
    <message>
        <source>Press a key…</source>
        <translation>Pulse una tecla…</translation>
    </message>
    <message>
        <source>Press the key you want</source>
        <translation>Pulsar la tecla deseada</translation>
    </message>
    <message>
        <source>Add another</source>
        <translation>Añadir otra</translation>
    </message>
    <message>
        <source>No %1 on your keyboard?</source>
        <translation>¿Su teclado no tiene «%1»?</translation>
    </message>
    <message>
        <source>Use %1</source>
        <translation>Usar %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Quitar %1</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Idioma</translation>
    </message>
    <message>
        <source>Dictate in</source>
        <translation>Dictar en</translation>
    </message>
    <message>
        <source>Set it up</source>
        <translation>Configurarlo</translation>
    </message>
    <message>
        <source>Use English for now</source>
        <translation>Usar el inglés por ahora</translation>
    </message>
    <message>
        <source>Microphone level</source>
        <translation>Nivel del micrófono</translation>
    </message>
    <message>
        <source>Talmo listens only while you dictate or test the microphone.</source>
        <translation>Talmo solo escucha mientras dicta o prueba el micrófono.</translation>
    </message>
    <message>
        <source>Say something: the bar moves. Talmo listens while this page is open, and later only while you dictate.</source>
        <translation>Diga algo: la barra se mueve. Talmo escucha mientras esta página está abierta y, después, solo mientras dicta.</translation>
    </message>
    <message>
        <source>Record from</source>
        <translation>Grabar con</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Probar</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>No encontrado</translation>
    </message>
    <message>
        <source>Welcome to Talmo</source>
        <translation>Le damos la bienvenida a Talmo</translation>
    </message>
    <message>
        <source>Hold %1, speak, and let go: your words are typed where the cursor is, in any program. Tap the key twice to dictate hands-free. Nothing that you say leaves this computer.</source>
        <translation>Mantenga pulsada la tecla %1, hable y suéltela: sus palabras se escriben donde está el cursor, en cualquier programa. Pulse la tecla dos veces para dictar con manos libres. Nada de lo que diga sale de este equipo.</translation>
    </message>
    <message>
        <source>Starting Talmo again opens its settings. So does its microphone icon, if your panel has a place for it.</source>
        <translation>Iniciar Talmo de nuevo abre su configuración, igual que el icono del micrófono, si el panel lo muestra.</translation>
    </message>
    <message>
        <source>The key to hold</source>
        <translation>La tecla que se mantiene pulsada</translation>
    </message>
    <message>
        <source>Hold this key to speak</source>
        <translation>Mantener pulsada esta tecla para hablar</translation>
    </message>
    <message>
        <source>Try it</source>
        <translation>Probarlo</translation>
    </message>
    <message>
        <source>A field to try it in</source>
        <translation>Un campo para probarlo</translation>
    </message>
    <message>
        <source>Recognition</source>
        <translation>Reconocimiento</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Hecho</translation>
    </message>
    <message>
        <source>Click here, hold %1 and say: This is my first dictation.</source>
        <translation>Haga clic aquí, mantenga pulsada la tecla %1 y diga: This is my first dictation.</translation>
    </message>
    <message>
        <source>This desktop does not let Talmo type into other programs.</source>
        <translation>Este escritorio no permite que Talmo escriba en otros programas.</translation>
    </message>
    <message>
        <source>GNOME lets Talmo hear its key and paste only with the help of an extension, which comes with Talmo and does nothing else.</source>
        <translation>GNOME solo permite que Talmo oiga su tecla y pegue con la ayuda de una extensión, que viene con Talmo y no hace nada más.</translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is enabled. Log out and in once to start it.</source>
        <translation>La extensión de GNOME de Talmo está activada. Cierre la sesión y vuelva a iniciarla para ponerla en marcha.</translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is enabled.</source>
        <translation>La extensión de GNOME de Talmo está activada.</translation>
    </message>
    <message>
        <source>GNOME&apos;s extensions are switched off. Switch them on in the Extensions application, then enable Talmo&apos;s here.</source>
        <translation>Las extensiones de GNOME están desactivadas. Actívelas en la aplicación Extensiones y después active aquí la de Talmo.</translation>
    </message>
    <message>
        <source>GNOME could not start Talmo&apos;s extension. Update Talmo, then log out and in once.</source>
        <translation>GNOME no ha podido iniciar la extensión de Talmo. Actualice Talmo; después, cierre la sesión y vuelva a iniciarla.</translation>
    </message>
    <message>
        <source>This desktop</source>
        <translation>Este escritorio</translation>
    </message>
    <message>
        <source>Enable the extension</source>
        <translation>Activar la extensión</translation>
    </message>
    <message>
        <source>Hold to dictate</source>
        <translation>Mantener para dictar</translation>
    </message>
    <message>
        <source>Another program&apos;s shortcut is the dictation key already.</source>
        <translation>La tecla de dictado ya es el atajo de otro programa.</translation>
    </message>
    <message>
        <source>Remove that shortcut in KDE&apos;s settings, then start Talmo again.</source>
        <translation>Quite ese atajo en la configuración de KDE y vuelva a iniciar Talmo.</translation>
    </message>
    <message>
        <source>recommended</source>
        <translation>recomendado</translation>
    </message>
    <message>
        <source>Built in, to begin with (English)</source>
        <translation>Integrado, para empezar (inglés)</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Detalles</translation>
    </message>
    <message>
        <source>Details in the menu</source>
        <translation>Detalles en el menú</translation>
    </message>
    <message>
        <source>Speech is recognised on this computer whichever recogniser you choose; the network is used only to download models.</source>
        <translation>La voz se reconoce en este equipo sea cual sea el motor elegido; la red solo se usa para descargar modelos.</translation>
    </message>
    <message>
        <source>Inserted</source>
        <translation>Texto insertado</translation>
    </message>
    <message>
        <source>Recommended</source>
        <translation>Recomendado</translation>
    </message>
    <message>
        <source>None until you pause</source>
        <translation>Ninguno hasta la pausa</translation>
    </message>
    <message>
        <source>The model for the live text is not installed; text appears when you pause.</source>
        <translation>El modelo del texto en directo no está instalado; el texto aparece en las pausas.</translation>
    </message>
    <message>
        <source>Live text</source>
        <translation>Texto en directo</translation>
    </message>
    <message>
        <source>Final text</source>
        <translation>Texto final</translation>
    </message>
    <message>
        <source>The live text is shown while you speak. The final text replaces it and is inserted.</source>
        <translation>El texto en directo se muestra al hablar. El texto final lo reemplaza y se inserta.</translation>
    </message>
    <message>
        <source>The desktop did not allow it for good. Switch this off and on again, and allow it in the dialog for later sessions too.</source>
        <translation>El escritorio no lo ha permitido de forma permanente. Desactive esta opción, vuelva a activarla y permítala también para sesiones posteriores en el diálogo.</translation>
    </message>
    <message>
        <source>The desktop did not give Talmo a dictation key. Ask again in the settings, under Privacy, or bind a key to “talmoctl toggle” in the desktop&apos;s keyboard settings.</source>
        <translation>El escritorio no ha dado a Talmo una tecla de dictado. Vuelva a pedirla en la configuración, en «Privacidad», o asigne una tecla a «talmoctl toggle» en los ajustes de teclado del escritorio.</translation>
    </message>
    <message>
        <source>Ask for the key again</source>
        <translation>Volver a pedir la tecla</translation>
    </message>
    <message>
        <source>The desktop asks which key starts dictation.</source>
        <translation>El escritorio pregunta qué tecla inicia el dictado.</translation>
    </message>
    <message>
        <source>The desktop&apos;s key for dictation: %1</source>
        <translation>Tecla del escritorio para dictar: %1</translation>
    </message>
    <message>
        <source>This desktop lets Talmo type into Wayland windows only if you allow it.</source>
        <translation>Este escritorio solo deja que Talmo escriba en ventanas de Wayland si usted lo permite.</translation>
    </message>
    <message>
        <source>Allow it in the settings, under Privacy. Until then, paste the text with Ctrl+V.</source>
        <translation>Permítalo en la configuración, en «Privacidad». Hasta entonces, pegue el texto con Ctrl+V.</translation>
    </message>
    <message>
        <source>Paste with the desktop&apos;s remote control</source>
        <translation>Pegar mediante el control remoto del escritorio</translation>
    </message>
    <message>
        <source>Lets Talmo press the paste shortcut in Wayland windows. The desktop may ask once, and may show that it is controlled while Talmo pastes.</source>
        <translation>Permite que Talmo pulse el atajo de pegar en las ventanas de Wayland. El escritorio puede preguntarlo una vez y mostrar que está controlado mientras Talmo pega.</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>%1 left</source>
        <translation>quedan %1</translation>
    </message>
    <message>
        <source>Talmo&apos;s GNOME extension is missing, so the key works in only a few programs. Reinstall the Talmo package.</source>
        <translation>Falta la extensión de GNOME de Talmo, por lo que la tecla solo funciona en unos pocos programas. Vuelva a instalar el paquete de Talmo.</translation>
    </message>
    <message>
        <source>This speech model is for a recogniser that Talmo does not have. Update Talmo, or choose another one.</source>
        <translation>Este modelo es para un reconocedor que Talmo no tiene. Actualice Talmo o elija otro.</translation>
    </message>
    <message>
        <source>A speech model could not be tested. Try again when the computer is less busy.</source>
        <translation>No se pudo probar un modelo de voz. Vuelva a intentarlo cuando el equipo esté menos ocupado.</translation>
    </message>
    <message>
        <source>The downloaded file cannot be used. Try again; if it fails again, choose another recogniser.</source>
        <translation>No se puede usar el archivo descargado. Vuelva a intentarlo; si vuelve a fallar, elija otro reconocedor.</translation>
    </message>
    <message>
        <source>The download cannot be unpacked. Free some space on the disk, then try again.</source>
        <translation>No se puede descomprimir la descarga. Libere espacio en el disco y vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The downloaded file cannot be read. Try again.</source>
        <translation>No se puede leer el archivo descargado. Vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The download cannot be saved. Free some space on the disk, then try again.</source>
        <translation>No se puede guardar la descarga. Libere espacio en el disco y vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The model “%1” is not installed.</source>
        <translation>El modelo «%1» no está instalado.</translation>
    </message>
    <message>
        <source>“%1” is a link to a model stored elsewhere. Delete the link in the folder for models yourself.</source>
        <translation>«%1» es un enlace a un modelo guardado en otro lugar. Elimine usted mismo el enlace en la carpeta de modelos.</translation>
    </message>
    <message>
        <source>Some files of the model “%1” could not be deleted. Check the permissions of the folder for models.</source>
        <translation>No se pudieron eliminar algunos archivos del modelo «%1». Compruebe los permisos de la carpeta de modelos.</translation>
    </message>
    <message>
        <source>The server cannot be trusted. Check this computer&apos;s date and network, then try again.</source>
        <translation>El servidor no es de confianza. Compruebe la fecha y la red de este equipo y vuelva a intentarlo.</translation>
    </message>
    <message>
        <source>The server does not deliver this file at present. Try again later.</source>
        <translation>El servidor no entrega este archivo por ahora. Vuelva a intentarlo más tarde.</translation>
    </message>
    <message>
        <source>There is not enough space on the disk. Free some, then try again. Needed: </source>
        <translation>No hay espacio suficiente en el disco. Libere espacio y vuelva a intentarlo. Necesario: </translation>
    </message>
    <message>
        <source>“%1” is still being installed. Wait for it to finish, or cancel it.</source>
        <translation>«%1» todavía se está instalando. Espere a que termine o cancélelo.</translation>
    </message>
    <message>
        <source>Speech recognition failed. Try again; if it fails again, choose another recogniser in the settings.</source>
        <translation>El reconocimiento de voz ha fallado. Vuelva a intentarlo; si vuelve a fallar, elija otro reconocedor en los ajustes.</translation>
    </message>
    <message>
        <source>The speech-detection model that this speech model needs is missing. Reinstall this model to get both.</source>
        <translation>Falta el modelo de detección de voz que este modelo necesita. Vuelva a instalar este modelo para obtener ambos.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is incomplete. Install the recogniser again.</source>
        <translation>La biblioteca del motor neuronal está incompleta. Instale el motor de nuevo.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is of a version that models of this kind do not work with. Install the model again.</source>
        <translation>Los modelos de este tipo no funcionan con esta versión de la biblioteca del motor neuronal. Instale el modelo de nuevo.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is too old. Install the recogniser again to get a newer one.</source>
        <translation>La biblioteca del motor neuronal es demasiado antigua. Instale el motor de nuevo para obtener una más reciente.</translation>
    </message>
    <message>
        <source>The neural recogniser&apos;s library is newer than this version of Talmo knows. Update Talmo, or install the recogniser again.</source>
        <translation>La biblioteca del motor neuronal es más reciente de lo que esta versión de Talmo conoce. Actualice Talmo o instale el motor de nuevo.</translation>
    </message>
    <message>
        <source>This speech model cannot be used. Install it again.</source>
        <translation>No se puede usar este modelo de voz. Instálelo de nuevo.</translation>
    </message>
</context>
</TS>
