#include "Input/Audio/MicrophoneReport.h"

namespace talmo {

QString MicrophoneReport::message() const
{
    switch (finding) {
    case Finding::Fine:
        return {};
    case Finding::NoServer:
        return QStringLiteral(QT_TRANSLATE_NOOP(
            "Talmo", "The desktop's sound server is not running. Start PipeWire or PulseAudio, or log in again."));
    case Finding::OnlySilence:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The microphone “%1” gives only silence. Is it muted?"))
            .arg(microphone);
    case Finding::Unplugged:
        break;
    }
    return QStringLiteral(
               QT_TRANSLATE_NOOP("Talmo", "The microphone “%1” was unplugged. Plug it in again, or choose another one "
                                          "in Talmo's settings."))
        .arg(microphone);
}

} // namespace talmo
