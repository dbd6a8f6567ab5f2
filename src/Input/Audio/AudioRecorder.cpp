#include "Input/Audio/AudioRecorder.h"

#include "Input/Audio/TLExceptionCatcher.h"

#include <utility>

namespace talmo {

namespace {

QString description(RecorderError::Case which, const QString &underlying)
{
    switch (which) {
    case RecorderError::Case::TapInstallationFailed:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Couldn't set up microphone capture: ")) + underlying;
    case RecorderError::Case::EngineStartFailed:
        return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Couldn't start audio capture: ")) + underlying;
    case RecorderError::Case::NoInputAvailable:
        break;
    }
    return QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "No microphone input is available."));
}

} // namespace

RecorderError::RecorderError(Case which, const QString &underlying)
    : Error(description(which, underlying)),
      m_case(which)
{
}

AudioRecorder::AudioRecorder(std::shared_ptr<AudioEngine> engine)
    : m_engine(std::move(engine))
{
}

void AudioRecorder::start(AudioBufferHandler onBuffer)
{
    {
        // Waits for a stop that is still delivering its last buffer. Not held any longer: the calls below may query the
        // sound server, and a stop on the main thread must not wait for that.
        const std::lock_guard lock(m_mutex);
        if (m_isRecording) {
            return;
        }
    }
    const AudioFormat format = m_engine->inputFormat();
    if (!(format.sampleRate > 0) || format.channelCount == 0) {
        throw RecorderError(RecorderError::Case::NoInputAvailable);
    }
    m_engine->removeTap();
    installTap(onBuffer);
    m_engine->prepare();
    try {
        m_engine->start();
    } catch (...) {
        const QString underlying = localizedDescription(std::current_exception());
        m_engine->removeTap();
        throw RecorderError(RecorderError::Case::EngineStartFailed, underlying);
    }
    const std::lock_guard lock(m_mutex);
    m_isRecording = true;
}

void AudioRecorder::installTap(const AudioBufferHandler &onBuffer)
{
    std::optional<CaughtAudioException> caught;
    try {
        if (TLExceptionCatcher::run([&] { m_engine->installTap(bufferSize, onBuffer); }, &caught)) {
            return;
        }
    } catch (...) {
        throw RecorderError(RecorderError::Case::TapInstallationFailed, localizedDescription(std::current_exception()));
    }
    throw RecorderError(RecorderError::Case::TapInstallationFailed,
                        caught ? caught->localizedDescription() : QString());
}

void AudioRecorder::stop()
{
    const std::lock_guard lock(m_mutex);
    if (!m_isRecording) {
        return;
    }
    m_engine->removeTap();
    m_engine->stop();
    m_isRecording = false;
}

} // namespace talmo
