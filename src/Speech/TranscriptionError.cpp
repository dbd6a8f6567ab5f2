#include "Speech/TranscriptionError.h"

namespace talmo {

namespace {

QString description(TranscriptionError::Case which)
{
    switch (which) {
    case TranscriptionError::Case::OnDeviceUnavailable:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "On-device speech recognition isn't available on this Mac."));
    case TranscriptionError::Case::LocaleNotSupported:
        return QStringLiteral(
            QT_TRANSLATE_NOOP("Talmo", "The current language isn't supported for on-device transcription."));
    case TranscriptionError::Case::ModelAssetsNotInstalled:
        return QStringLiteral(QT_TRANSLATE_NOOP(
            "Talmo", "The on-device speech model for this language isn't installed yet. Installing it once "
                     "requires an internet connection; after that, transcription works fully offline."));
    case TranscriptionError::Case::NoCompatibleAudioFormat:
        return QStringLiteral(QT_TRANSLATE_NOOP(
            "Talmo", "Couldn't find a compatible audio format for the microphone and speech recognizer."));
    case TranscriptionError::Case::NotRecording:
        break;
    }
    return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Not currently recording."));
}

} // namespace

TranscriptionError::TranscriptionError(Case which)
    : Error(description(which)),
      m_case(which)
{
}

} // namespace talmo
